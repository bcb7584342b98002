#pragma once

#include "calcore/Point.h"

#include <limits>

namespace belvor {

/// An axis-parallel box.
template <int N>
class Extent {
public:
    /// The box that holds no point.
    static constexpr Extent nothing() noexcept { return {}; }

    /// Widens the box to hold `p`. A coordinate that is not a number widens nothing.
    constexpr Extent& operator+=(const Point<N>& p) noexcept
    {
        for (int axis = 0; axis < N; ++axis) {
            low[axis] = p[axis] < low[axis] ? p[axis] : low[axis];
            high[axis] = p[axis] > high[axis] ? p[axis] : high[axis];
        }
        return *this;
    }

    /// True only when the box holds no point; a flat box is not degenerate.
    constexpr bool degenerate() const noexcept
    {
        for (int axis = 0; axis < N; ++axis)
            if (low[axis] > high[axis]) return true;
        return false;
    }

    constexpr const Point<N>& lo() const noexcept { return low; }
    constexpr const Point<N>& hi() const noexcept { return high; }

private:
    constexpr Extent() noexcept
    {
        for (int axis = 0; axis < N; ++axis) {
            low[axis] = std::numeric_limits<double>::max();
            high[axis] = -std::numeric_limits<double>::max();
        }
    }
    Point<N> low, high;
};

}   // namespace belvor
