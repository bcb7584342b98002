#include "ui/panels/SlideScale.h"

#include <cmath>

namespace belvor {
namespace {

/// Within the slide; what is not a number goes to the top.
double onSlide(double position) noexcept { return position >= -1.0 ? std::min(position, 1.0) : -1.0; }

EyeSlideRecord asking(EyeSlideRecord record, double eye, double lookAt) noexcept
{
    record.eye = onSlide(eye);
    record.lookAt = onSlide(lookAt);
    return record;
}

EyeSlideRecord movedSlide(const EyeSlideRecord& record, MarkerDrag drag, double to) noexcept
{
    switch (drag) {
    case MarkerDrag::eye: return asking(record, to, record.lookAt);
    case MarkerDrag::lookAt: return asking(record, record.eye, to);
    case MarkerDrag::eyeKeepingDistance: return asking(record, to, record.lookAt - record.eye + to);
    case MarkerDrag::lookAtKeepingDistance: return asking(record, record.eye - record.lookAt + to, to);
    case MarkerDrag::none: break;
    }
    return record;
}

}   // namespace

SlideScale::SlideScale(PixelSize client, int buttonHeight, PixelScale monitor) noexcept
    : x(client.width / 2),
      top(buttonHeight),
      bottom(client.height - buttonHeight - 1),
      pixels(monitor)
{}

int SlideScale::toPixel(double position) const noexcept
{
    return truncatedPixel(((1.0 - position) * top + (position + 1.0) * bottom) * 0.5);
}

double SlideScale::toPosition(int y) const noexcept { return (2.0 * y - bottom - top) / (bottom - top); }

MarkerDrag hitMarker(const EyeSlideRecord& record, const SlideScale& scale, int x, int y, bool shift) noexcept
{
    if (!scale.usable()) return MarkerDrag::none;
    const PixelPoint eye{scale.x, scale.toPixel(record.eye)}, lookAt{scale.x, scale.toPixel(record.lookAt)};
    return hitMarker(eye, lookAt, x, y, shift, scale.pixels);
}

SlideGhost slideGhost(const EyeSlideRecord& record, MarkerDrag drag, const SlideScale& scale, int y) noexcept
{
    const int between = truncatedPixel((record.eye - record.lookAt) * (scale.bottom - scale.top) * 0.5);
    switch (drag) {
    case MarkerDrag::eye: return {true, false, y, 0};
    case MarkerDrag::lookAt: return {false, true, 0, y};
    case MarkerDrag::eyeKeepingDistance: return {true, true, y, y - between};
    case MarkerDrag::lookAtKeepingDistance: return {true, true, y + between, y};
    case MarkerDrag::none: break;
    }
    return {};
}

EyeSlideRecord draggedSlide(const EyeSlideRecord& record, MarkerDrag drag, const SlideScale& scale,
                            int y) noexcept
{
    return movedSlide(record, drag, scale.toPosition(y));
}

EyeSlideRecord nudgedSlide(const EyeSlideRecord& record, MarkerDrag drag, const SlideScale& scale,
                           int down) noexcept
{
    if (!scale.usable()) return record;
    const bool eye = drag == MarkerDrag::eye || drag == MarkerDrag::eyeKeepingDistance;
    return movedSlide(record, drag,
                      (eye ? record.eye : record.lookAt) + 2.0 * down / (scale.bottom - scale.top));
}

EyeSlideRecord steppedSlide(const EyeSlideRecord& record, bool retreat, bool large,
                            bool keepDistance) noexcept
{
    const double step = std::fabs(record.lookAt - record.eye) * (large ? 0.5 : 0.1) * (retreat ? 1.0 : -1.0);
    return asking(record, record.eye + step, keepDistance ? record.lookAt + step : record.lookAt);
}

PixelRect extentBar(const EyeSlideRecord& record, const SlideScale& scale, PixelSize client,
                    int barWidth) noexcept
{
    const auto [upper, lower] =
        std::minmax({scale.toPixel(record.extentTop), scale.toPixel(record.extentBottom)});
    return {(client.width - barWidth) / 2, upper, (client.width + barWidth) / 2, lower + 1};
}

std::vector<PixelLine> slideLine(const EyeSlideRecord& record, const SlideScale& scale)
{
    const int eye = scale.toPixel(record.eye), lookAt = scale.toPixel(record.lookAt);
    const int besideCross = scale.pixels(20), besideEye = scale.pixels(16);
    std::vector<PixelLine> pieces;
    const auto add = [&](int from, int to) {
        if (from < to) pieces.push_back({{scale.x, from}, {scale.x, to}});
    };
    add(scale.top, lookAt - besideCross);
    add(lookAt + besideCross, eye - besideEye);
    add(eye + besideEye, scale.bottom - 1);
    return pieces;
}

}   // namespace belvor
