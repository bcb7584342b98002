#pragma once

#include "calcore/Point.h"

#include <cmath>
#include <cstdint>

namespace belvor {

/// A straight segment that crosses at most one column or one row of sample points, as most edges of a large
/// model do, and its only pixel. Found without branches that depend on where the ends lie between the sample
/// points: that cannot be foretold. Columns and rows go through the same steps side by side.
class TinyLine {
public:
    struct Pixel {
        Point<3> point;   ///< Of the segment.
        int column, row;
        int toOther[2];   ///< Columns and rows to the other sample point beside the point; 0 and 0: none.
    };

    /// Between points in front of the eye: pixels right, pixels down, depth.
    TinyLine(const Point<3>& start, const Point<3>& stop) noexcept
        : from{start[0], start[1]},
          to{stop[0], stop[1]},
          fromDepth(start[2]),
          toDepth(stop[2])
    {
        const Pair fromCell = floorOf(from), toCell = floorOf(to), steps = absolute(toCell - fromCell);
        sample = fromCell < toCell ? toCell : fromCell;
        isCrossed = fromCell != toCell;
        const Mask fits = (fromCell != from) & (toCell != to) & (absolute(from) < Pair{farthest, farthest});
        count = both(fits) ? steps[0] + steps[1] : HUGE_VAL;
    }

    // Neither holds of one with more pixels, one that begins or ends on a column or row, and one far away.
    bool crossesOneAtMost() const noexcept { return count <= 1.0; }
    bool crossesOne() const noexcept { return count == 1.0; }

    /// Of one that crosses a column or row: there. Of any other: next to its middle.
    Pixel pixel() const noexcept
    {
        const Pair size = to - from, part = (sample - from) / size;   // from start to end
        const Pair crossing = chosen(isCrossed, sample, from + size * swapped(part));
        const Pair crossingDepths = chosen(isCrossed, fromDepth + (toDepth - fromDepth) * part, Pair{});
        const Mask isApart = Pair{count, count} == Pair{};
        const Pair point = chosen(isApart, (from + to) * 0.5, crossing);
        const Pair depths = chosen(isApart, Pair{(fromDepth + toDepth) * 0.5, -0.0}, crossingDepths);
        const Pair below = floorOf(point), nearer = floorOf(point + 0.5);
        return pixelAt(point, depths[0] + depths[1], nearer,
                       chosen(isApart | (below == point), Pair{}, (below - nearer) * 2.0 + 1.0));
    }

    /// At least as many columns as rows.
    bool isMostlyAcross() const noexcept
    {
        const Pair size = absolute(to - from);
        return size[0] >= size[1];
    }

private:
    using Pair = double __attribute__((vector_size(16)));   // of columns and of rows
    using Mask = decltype(Pair{} < Pair{});                 // all bits or none of each

    static Pixel pixelAt(Pair point, double depth, Pair place, Pair toOther) noexcept
    {
        return {{point[0], point[1], depth},
                static_cast<int>(place[0]),
                static_cast<int>(place[1]),
                {static_cast<int>(toOther[0]), static_cast<int>(toOther[1])}};
    }
    /// The largest integers not above numbers near the picture.
    static Pair floorOf(Pair value) noexcept
    {
        constexpr double shift = 0x1.8p52;   // has no digits behind the point
        const Pair nearest = value + shift - shift;
        return nearest - chosen(nearest > value, Pair{1.0, 1.0}, Pair{});
    }
    static Pair absolute(Pair value) noexcept
    {
        return reinterpret_cast<Pair>(reinterpret_cast<Mask>(value) & INT64_MAX);
    }
    /// `yes` where the mask has bits, else `no`.
    static Pair chosen(Mask mask, Pair yes, Pair no) noexcept
    {
        return reinterpret_cast<Pair>((mask & reinterpret_cast<Mask>(yes))
                                      | (~mask & reinterpret_cast<Mask>(no)));
    }
    static bool both(Mask mask) noexcept { return (mask[0] & mask[1]) != 0; }
    static Pair swapped(Pair two) noexcept { return Pair{two[1], two[0]}; }

    static constexpr double farthest = 0x1p29;   // pixels

    Pair from, to;
    Pair sample;   // the column and row that it can cross
    Mask isCrossed;
    double fromDepth, toDepth;
    double count;   // of the columns and rows that it crosses
};

}   // namespace belvor
