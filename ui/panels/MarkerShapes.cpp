#include "ui/panels/MarkerShapes.h"

#include <cmath>

namespace belvor {
namespace {

int rounded(double v) noexcept { return truncatedPixel(std::floor(v + 0.5)); }

PixelPoint roundedPoint(double x, double y) noexcept { return {rounded(x), rounded(y)}; }

}   // namespace

PixelDirection directionBetween(PixelPoint from, PixelPoint to, PixelDirection fallback) noexcept
{
    const double dx = to.x - from.x, dy = to.y - from.y;
    const double length = std::hypot(dx, dy);
    return length == 0.0 ? fallback : PixelDirection{dx / length, dy / length};
}

EyeGlyph eyeGlyph(PixelPoint eye, PixelDirection sight, PixelScale scale) noexcept
{
    // The shape looks along +x and is symmetrical, so that y running down does not matter.
    const auto at = [&](int across, int down) {
        const double x = scale.exact(across), y = scale.exact(down);
        return roundedPoint(eye.x + x * sight.x - y * sight.y, eye.y + x * sight.y + y * sight.x);
    };
    return {{at(9, -6), at(-9, 0), at(9, 6)},
            {at(3, -3), at(6, -1), at(6, 1), at(3, 3)},
            {at(3, -1), at(2, 0), at(3, 1)}};
}

PixelRect EyeGlyph::bounds() const noexcept
{
    PixelRect box{lids[0].x, lids[0].y, lids[0].x, lids[0].y};
    const auto include = [&box](const auto& points) {
        for (const PixelPoint& p : points) {
            box.left = std::min(box.left, p.x);
            box.top = std::min(box.top, p.y);
            box.right = std::max(box.right, p.x);
            box.bottom = std::max(box.bottom, p.y);
        }
    };
    include(lids);
    include(eyeball);
    include(pupil);
    return box;
}

std::array<PixelLine, 2> crossStrokes(PixelPoint p, PixelScale scale) noexcept
{
    const int arm = scale(10);
    return {{{{p.x - arm, p.y}, {p.x + arm, p.y}}, {{p.x, p.y - arm}, {p.x, p.y + arm}}}};
}

PixelRect around(PixelPoint p, PixelScale scale) noexcept
{
    const int radius = scale(10);
    return {p.x - radius, p.y - radius, p.x + radius, p.y + radius};
}

std::vector<PixelLine> sightLines(PixelPoint eye, PixelPoint lookAt, bool parallel, PixelScale scale)
{
    const double gap = scale.exact(6), apart = scale.exact(2);
    const PixelDirection u = directionBetween(eye, lookAt, {0.0, 0.0});
    const auto line = [&](double dx, double dy) {
        return PixelLine{roundedPoint(eye.x + gap * u.x + dx, eye.y + gap * u.y + dy),
                         roundedPoint(lookAt.x - gap * u.x + dx, lookAt.y - gap * u.y + dy)};
    };
    if (!parallel) return {line(0, 0)};
    return {line(-apart * u.y, apart * u.x), line(apart * u.y, -apart * u.x)};
}

std::array<PixelPoint, 3> pointerShape(PixelPoint at, PixelPoint marker, PixelScale scale) noexcept
{
    const PixelDirection u = directionBetween(at, marker, {1.0, 0.0});
    const auto corner = [&](int along, int across) {
        const double x = scale.exact(along), y = scale.exact(across);
        return roundedPoint(at.x + x * u.x - y * u.y, at.y + x * u.y + y * u.x);
    };
    return {corner(7, 0), corner(-6, 4), corner(-6, -4)};
}

ZoomWedge zoomWedge(PixelPoint eye, double zoomAngle, PixelScale scale) noexcept
{
    const double sine = std::sin(zoomAngle / 2), cosine = std::cos(zoomAngle / 2);
    const auto at = [&](int across, int up) {
        return PixelPoint{truncatedPixel(eye.x + scale.exact(across) * sine),
                          truncatedPixel(eye.y - scale.exact(up) * cosine)};
    };
    ZoomWedge wedge{{{{at(-50, 50), at(-10, 10)}, {at(50, 50), at(10, 10)}, {at(-30, 30), at(30, 30)}}}, {}};
    wedge.bounds = {at(-50, 50).x, at(-50, 50).y, at(50, 50).x, at(10, 10).y};
    return wedge;
}

}   // namespace belvor
