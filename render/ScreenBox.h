#pragma once

#include "calcore/Point.h"

#include <limits>

namespace belvor {

/// The extent of a facet on the screen.
class ScreenBox {
public:
    void add(const Point<3>& p) noexcept
    {
        const Pair both{p[0], p[1]};
        low = both < low ? both : low;
        high = both > high ? both : high;
    }
    /// What add() leaves out, for points that may lie behind the eye or be undefined.
    void checkPoint(const Point<3>& p) noexcept
    {
        nearest = p[2] > nearest ? p[2] : nearest;
        allNumbers &= p[0] == p[0] && p[1] == p[1];
    }

    double top() const noexcept { return low[1]; }
    double bottom() const noexcept { return high[1]; }
    /// The largest depth of what was checked is negative: the whole facet is in front of the eye.
    bool inFront() const noexcept { return nearest < 0.0; }
    /// No coordinate of what was checked is undefined.
    bool hasOnlyNumbers() const noexcept { return allNumbers; }

    /// Whether no sample point can lie between the sides: beside the picture, or between two
    /// columns. A crossing may be rounded past the corners, by far less than the margin.
    bool coversNoColumn(int columns) const noexcept
    {
        const double left = low[0], right = high[0];
        if (!(left > -exactEnough && right < exactEnough)) return false;
        return right <= -margin || left >= columns
               || (left >= margin && static_cast<int>(left - margin) == static_cast<int>(right + margin));
    }

private:
    using Pair = double __attribute__((vector_size(16)));
    static constexpr double margin = 1e-6, exactEnough = 1e8, most = std::numeric_limits<double>::max();

    Pair low{most, most}, high{-most, -most};   // x and y
    double nearest = -most;
    bool allNumbers = true;
};

}   // namespace belvor
