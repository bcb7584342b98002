#pragma once

#include "calcore/Point.h"

#include <limits>

namespace belvor {

/// The extent of a facet on the screen.
struct ScreenBox {
    double left = std::numeric_limits<double>::max(), right = -left, top = left, bottom = -left;
    double nearest = -left;   ///< The largest depth: negative when the whole facet is in front of the eye.
    bool allNumbers = true;   ///< No coordinate is undefined.

    void add(const Point<3>& p) noexcept
    {
        left = p[0] < left ? p[0] : left;
        right = p[0] > right ? p[0] : right;
        top = p[1] < top ? p[1] : top;
        bottom = p[1] > bottom ? p[1] : bottom;
    }
    /// What add() leaves out, for points that may lie behind the eye or be undefined.
    void checkPoint(const Point<3>& p) noexcept
    {
        nearest = p[2] > nearest ? p[2] : nearest;
        allNumbers &= p[0] == p[0] && p[1] == p[1];
    }
    bool inFront() const noexcept { return nearest < 0.0; }

    /// Whether no sample point can lie between the sides: beside the picture, or between two
    /// columns. A crossing may be rounded past the corners, by far less than the margin.
    bool coversNoColumn(int columns) const noexcept
    {
        constexpr double margin = 1e-6, exactEnough = 1e8;
        if (!(left > -exactEnough && right < exactEnough)) return false;
        return right <= -margin || left >= columns
               || (left >= margin && static_cast<int>(left - margin) == static_cast<int>(right + margin));
    }
};

}   // namespace belvor
