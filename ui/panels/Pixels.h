#pragma once

#include "ui/Pixels.h"
#include "view/PixelScale.h"

#include <algorithm>
#include <cstddef>

namespace belvor {

/// A coordinate truncated to a pixel. Markers far outside stay within what GDI draws safely.
inline int truncatedPixel(double v) noexcept
{
    return v >= -16000.0 ? static_cast<int>(std::min(v, 16000.0)) : -16000;
}

/// A press takes a marker strictly within 10 pixels of it, at the monitor's scale.
constexpr bool hits(PixelPoint marker, int x, int y, PixelScale scale = {}) noexcept
{
    const long long dx = x - marker.x, dy = y - marker.y, reach = scale(10);
    return dx * dx + dy * dy < reach * reach;
}

/// What a drag in the plan, the elevation or the eye slide moves. With Shift the other marker
/// moves along, so that the viewing distance is kept.
enum class MarkerDrag { none, eye, lookAt, eyeKeepingDistance, lookAtKeepingDistance };

/// The drag of marker 0, the eye, or 1, the look-at point.
constexpr MarkerDrag dragOf(std::size_t marker, bool shift) noexcept
{
    if (marker == 0) return shift ? MarkerDrag::eyeKeepingDistance : MarkerDrag::eye;
    return shift ? MarkerDrag::lookAtKeepingDistance : MarkerDrag::lookAt;
}

/// The drag that a press starts on the first of the two markers that it hits; the eye wins.
constexpr MarkerDrag hitMarker(PixelPoint eye, PixelPoint lookAt, int x, int y, bool shift,
                               PixelScale scale = {}) noexcept
{
    if (hits(eye, x, y, scale)) return dragOf(0, shift);
    if (hits(lookAt, x, y, scale)) return dragOf(1, shift);
    return MarkerDrag::none;
}

}   // namespace belvor
