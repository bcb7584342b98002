#pragma once

#include "calcore/Point.h"
#include "render/Spans.h"

#include <cstdint>

namespace belvor {

/// The rows 0 to height − 1 on which a projected edge is active: from `first` to `last`,
/// none when first > last.
struct EdgeRows {
    int first, last;
    constexpr bool none() const noexcept { return first > last; }
};

/// Where an edge with its upper end at (y0, z0) and its lower end at (y1, z1) is active,
/// y0 <= y1: strictly below its upper end, down to its lower end, and only in front of the
/// eye (z < 0): a part behind the eye's plane comes out as running off the picture on the
/// other side. A horizontal edge is never active.
constexpr EdgeRows activeRows(double y0, double z0, double y1, double z1, int height) noexcept
{
    constexpr EdgeRows never{1, 0};
    // Of y not negative: the row below (y < height), the last row not below.
    const auto rowBelow = [](double y) { return static_cast<int>(y) + 1; };
    const auto rowAtOrAbove = [height](double y) { return y < height ? static_cast<int>(y) : height - 1; };
    const int last = height - 1;
    if (!(y0 < y1)) return never;
    if (z0 >= 0.0) {   // the upper end lies behind the eye: visible from the lower end downwards
        if (z1 >= 0.0 || !(y1 < last)) return never;
        return {y1 < 0.0 ? 0 : rowBelow(y1), last};
    }
    if (z1 >= 0.0) {   // the lower end lies behind: visible from the top down to the upper end
        if (!(y0 >= 0.0)) return never;
        return {0, rowAtOrAbove(y0)};
    }
    if (!(y1 >= 0.0) || !(y0 < last)) return never;
    return {y0 < 0.0 ? 0 : rowBelow(y0), rowAtOrAbove(y1)};
}

/// The two ends of an edge on the screen (pixels right, pixels down, depth), the upper one
/// first; of ends at the same height, or of one that is not a number, the first one given.
struct EdgeEnds {
    const Point<3>*upper, *lower;

    static EdgeEnds of(const Point<3>& from, const Point<3>& to) noexcept
    {
        return from[1] > to[1] ? EdgeEnds{&to, &from} : EdgeEnds{&from, &to};
    }
};

/// An edge on the screen, prepared for finding where it crosses a row.
struct ScreenEdge {
    double x, y, depth;      ///< Of the upper end.
    double dx, dy, ddepth;   ///< From the upper end to the lower one.

    ScreenEdge() noexcept = default;
    explicit ScreenEdge(const EdgeEnds& ends) noexcept
        : x((*ends.upper)[0]),
          y((*ends.upper)[1]),
          depth((*ends.upper)[2]),
          dx((*ends.lower)[0] - x),
          dy((*ends.lower)[1] - y),
          ddepth((*ends.lower)[2] - depth)
    {}

    /// Where the edge crosses row `row`.
    Crossing at(int row) const noexcept
    {
        const double t = (row - y) / dy;
        return {x + dx * t, depth + ddepth * t};
    }
};

}   // namespace belvor
