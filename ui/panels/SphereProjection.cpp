#include "ui/panels/SphereProjection.h"

#include "calcore/Angle.h"

#include <cmath>
#include <utility>

namespace belvor {
namespace {

constexpr int edge = 2;   // of the frame about the panel, which the system draws so at every scale

/// The elevation at which the corner of a cube is seen, atan √½.
constexpr double cubeCorner = 35.2643896827547;

/// Of a point on the disc in steps between the rings, right and down of its centre.
SphereDirection directionAt(double u, double w) noexcept
{
    return {toDegrees(std::atan2(u, w)), 90.0 - 22.5 * std::sqrt(std::min(u * u + w * w, 16.0))};
}

}   // namespace

SphereDisc::SphereDisc(PixelSize client, PixelScale monitor) noexcept : pixels(monitor)
{
    const int left = edge, top = edge, right = client.width - edge;
    int bottom = client.height - edge;
    const int width = right - left;
    if (bottom - top > width) bottom = top + width;
    radiusX = width / 8;
    radiusY = (bottom - top) / 8;
    centre = {(left + right) / 2, (top + bottom) / 2};
}

PixelPoint SphereDisc::toPixel(const SphereDirection& direction) const noexcept
{
    const Angle bearing = Angle::degrees(direction.bearing);
    const double fromZenith = 90.0 - std::fabs(std::trunc(direction.elevation));
    // Multiplied from left to right: in another order some products fall short of a whole pixel.
    return {centre.x - truncatedPixel(bearing.sin() * radiusX * fromZenith * (-4.0 / 90.0)),
            centre.y - truncatedPixel(bearing.cos() * radiusY * fromZenith * (-4.0 / 90.0))};
}

SphereDirection SphereDisc::toDirection(int x, int y, SphereKeys keys) const noexcept
{
    const double u = static_cast<double>(x - centre.x) / radiusX,
                 w = static_cast<double>(y - centre.y) / radiusY;
    SphereDirection direction = directionAt(u, w);
    if (keys.snap) {
        direction.bearing = std::floor(direction.bearing / 45.0 + 0.5) * 45.0;
        direction.elevation = direction.elevation < 17.63   ? 0.0
                              : direction.elevation < 62.63 ? cubeCorner
                                                            : 90.0;
    }
    if (keys.below) direction.elevation = 0.0 - direction.elevation;   // never −0
    return direction;
}

SphereDirection SphereDisc::nudged(const SphereDirection& from, PixelPoint by) const noexcept
{
    const Angle bearing = Angle::degrees(from.bearing);
    const double rings = (90.0 - std::fabs(from.elevation)) / 22.5;
    SphereDirection direction = directionAt(bearing.sin() * rings + static_cast<double>(by.x) / radiusX,
                                            bearing.cos() * rings + static_cast<double>(by.y) / radiusY);
    if (from.elevation < 0.0) direction.elevation = 0.0 - direction.elevation;
    return direction;
}

PixelRect SphereDisc::ring(int number) const noexcept
{
    return {centre.x - number * radiusX, centre.y - number * radiusY, centre.x + number * radiusX,
            centre.y + number * radiusY};
}

bool SphereMarkers::show(const SphereMarker& marker) noexcept
{
    const SphereDirection direction{marker.bearing, marker.elevation};
    if (marker.item == 0) {
        if (eye == direction) return false;
        eye = direction;
        return true;
    }
    if (marker.item > lights.size()) return false;
    Light& light = lights[marker.item - 1];
    if (light.present && light.direction == direction) return false;
    light = {direction, true};
    return true;
}

bool SphereMarkers::hide(std::size_t light) noexcept
{
    return light < lights.size() && std::exchange(lights[light].present, false);
}

const SphereDirection& SphereMarkers::of(int item) const noexcept
{
    return item == 0 ? eye : lights[static_cast<std::size_t>(item) - 1].direction;
}

int hitItem(const SphereMarkers& markers, const SphereDisc& disc, int x, int y) noexcept
{
    if (!disc.usable()) return -1;
    for (int item = 0; item <= sphereLights; ++item) {
        const bool there = item == 0 || markers.lights[static_cast<std::size_t>(item) - 1].present;
        if (there && hits(disc.toPixel(markers.of(item)), x, y, disc.pixels)) return item;
    }
    return -1;
}

SphereDirection turnedEye(const SphereDirection& eye, SphereArrow arrow, bool large) noexcept
{
    const double step = large ? 5.0 : 1.0;
    switch (arrow) {
    case SphereArrow::right: return {eye.bearing + step, eye.elevation};
    case SphereArrow::left: return {eye.bearing - step, eye.elevation};
    case SphereArrow::up: return {eye.bearing, eye.elevation + step};
    case SphereArrow::down: return {eye.bearing, eye.elevation - step};
    }
    return eye;
}

PixelArea arrowArea(SphereArrow arrow, PixelSize client, const ArrowSizes& s) noexcept
{
    const int middle = (client.width - s.verticalWidth) / 2, bottom = client.height - 2;
    switch (arrow) {
    case SphereArrow::right:
        return {middle + s.verticalWidth, bottom - s.horizontalHeight, s.horizontalWidth, s.horizontalHeight};
    case SphereArrow::down: return {middle, bottom - s.verticalHeight, s.verticalWidth, s.verticalHeight};
    case SphereArrow::left:
        return {middle - s.horizontalWidth, bottom - s.horizontalHeight, s.horizontalWidth,
                s.horizontalHeight};
    case SphereArrow::up: break;
    }
    return {middle, bottom - 2 * s.verticalHeight, s.verticalWidth, s.verticalHeight};
}

}   // namespace belvor
