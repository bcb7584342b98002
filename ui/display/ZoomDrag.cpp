#include "ui/display/ZoomDrag.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>

namespace belvor {

PixelRect zoomRectangle(PixelPoint anchor, PixelSize client) noexcept
{
    if (client.width < 1 || client.height < 1) return {};
    const std::int64_t width = client.width, height = client.height;
    const int centreX = client.width / 2, centreY = client.height / 2;
    std::int64_t dx = std::abs(std::int64_t{anchor.x} - centreX);
    std::int64_t dy = std::abs(std::int64_t{anchor.y} - centreY);
    if (dx * height <= dy * width) dx = dy * width / height;
    else dy = dx * height / width;
    const int reachX = static_cast<int>(dx), reachY = static_cast<int>(dy);
    return {centreX - reachX, centreY - reachY, centreX + reachX + 1, centreY + reachY + 1};
}

double zoomFactor(PixelPoint release, PixelSize client) noexcept
{
    if (client.width < 1 || client.height < 1) return 1.0;
    const double across = static_cast<double>(release.x) / client.width;
    const double down = static_cast<double>(release.y) / client.height;
    return 2.0 * std::max(std::fabs(across - 0.5), std::fabs(down - 0.5));
}

void ZoomDrag::press(PixelPoint at) noexcept
{
    state = State::pressed;
    anchorPixel = at;
}

bool ZoomDrag::move(PixelPoint to) noexcept
{
    if (state == State::idle || (state == State::pressed && !strayed(to))) return false;
    state = State::dragging;
    anchorPixel = to;
    return true;
}

ZoomDrag::Outcome ZoomDrag::release(PixelPoint at) noexcept
{
    Outcome outcome = Outcome::none;
    if (state != State::idle)
        outcome = state == State::pressed && !strayed(at) ? Outcome::click : Outcome::zoom;
    cancel();
    return outcome;
}

void ZoomDrag::cancel() noexcept
{
    state = State::idle;
    anchorPixel = {-1, -1};
}

bool ZoomDrag::strayed(PixelPoint to) const noexcept
{
    return std::abs(to.x - anchorPixel.x) > stray.width || std::abs(to.y - anchorPixel.y) > stray.height;
}

}   // namespace belvor
