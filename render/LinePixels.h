#pragma once

#include "render/LineTable.h"

#include <algorithm>
#include <cmath>

namespace belvor {

/// The point of a segment where the coordinate of that axis has that value.
inline Point<3> pointAt(const LineSegment& s, int axis, double value) noexcept
{
    const double t = (value - s.from[axis]) / (s.to[axis] - s.from[axis]);
    Point<3> point;
    for (int i = 0; i < 3; ++i) point[i] = i == axis ? value : s.from[i] + (s.to[i] - s.from[i]) * t;
    return point;
}

/// Numbers below it, and integers near them, are exact in an int.
constexpr double fewDigits = 0x1p30;

/// The largest integer not above a number with few digits.
inline int floorOf(double value) noexcept
{
    const int truncated = static_cast<int>(value);
    return truncated - (truncated > value);
}
/// The pixel of one that is listed.
inline int columnOf(const LinePixel& pixel) noexcept { return floorOf(pixel.point[0] + 0.5); }
inline int rowOf(const LinePixel& pixel) noexcept { return floorOf(pixel.point[1] + 0.5); }
/// The smallest not below it.
inline int ceilOf(double value) noexcept { return -floorOf(-value); }

/// The integers between two numbers, themselves included; as numbers, since they may be large.
struct Integers {
    Integers(double a, double b) noexcept : first(std::ceil(std::min(a, b))), last(std::floor(std::max(a, b)))
    {}
    bool none() const noexcept { return first > last; }
    bool holds(double value) const noexcept { return value >= first && value <= last; }
    bool leavesOut(double value) const noexcept { return none() || value < first || value > last; }
    double first, last;
};

}   // namespace belvor
