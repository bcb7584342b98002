// The drawing of simple facets, compiled once for any processor and once for one with wide vectors. The
// arithmetic is the same in both, number for number; the lanes of a vector are four rows of a facet, or
// four pixels of a row. Only plain types are used here: what a header defines inline could be compiled
// for wide vectors and then be taken by the linker for other callers too.
#pragma once

#include "render/FacetFill.h"

#include <cstring>

namespace belvor {
namespace {

using Doubles = double __attribute__((vector_size(32)));
using Longs = long long __attribute__((vector_size(32)));
using Ints = int __attribute__((vector_size(16)));
using Owners = std::uint32_t __attribute__((vector_size(16)));

inline Doubles all(double value) { return Doubles{value, value, value, value}; }

/// A corner for each of four rows.
struct Corners {
    Doubles x, y, z;
};

inline Corners cornerOf(const double* points, std::uint32_t index)
{
    const double* const p = points + 3 * std::size_t{index};
    return {all(p[0]), all(p[1]), all(p[2])};
}

inline Corners choose(Longs which, const Corners& yes, const Corners& no)
{
    return {which ? yes.x : no.x, which ? yes.y : no.y, which ? yes.z : no.z};
}

/// Where an edge crosses four rows.
struct Crossings {
    Doubles x, depth;
};

inline Crossings cross(const Corners& upper, const Corners& lower, Doubles rows)
{
    const Doubles t = (rows - upper.y) / (lower.y - upper.y);
    return {upper.x + (lower.x - upper.x) * t, upper.z + (lower.z - upper.z) * t};
}

/// Runs of pixels of a facet on four rows; see coveredColumns() and spanBetween().
struct Runs {
    double depth[4], step[4];
    int first[4], count[4];
};

inline bool anyPositive(Ints counts)
{
    using Pair = long long __attribute__((vector_size(16)));
    const Pair bits = (Pair)(counts > 0);
    return (bits[0] | bits[1]) != 0;
}

/// False when none has a pixel.
inline bool findRuns(const Crossings& a, const Crossings& b, int width, Runs& runs)
{
    const Longs swapped = b.x < a.x;
    const Doubles left = swapped ? b.x : a.x, right = swapped ? a.x : b.x;
    const Doubles leftDepth = swapped ? b.depth : a.depth, rightDepth = swapped ? a.depth : b.depth;
    const Doubles lastColumn = all(width - 1.0), outside = all(-1.0);
    const Longs covers = (right > 0.0) & (left < lastColumn);
    const Doubles from = (covers & (left > outside)) ? left : outside;
    const Doubles to = covers ? (right < lastColumn ? right : lastColumn) : outside;
    const Ints first = __builtin_convertvector(from, Ints) + 1;
    const Ints count = __builtin_convertvector(to, Ints) + 1 - first;
    if (!anyPositive(count)) return false;
    const Doubles step = (rightDepth - leftDepth) / (right - left);   // equal ends cover no pixel
    const Doubles depth = leftDepth + (__builtin_convertvector(first, Doubles) - left) * step;
    std::memcpy(runs.depth, &depth, sizeof depth);
    std::memcpy(runs.step, &step, sizeof step);
    std::memcpy(runs.first, &first, sizeof first);
    std::memcpy(runs.count, &count, sizeof count);
    return true;
}

/// Offers a run of pixels, four at a time; the last ones may lie behind it and stay as they are.
inline void fillRun(double* depths, std::uint32_t* owners, std::uint32_t facet, double depth, double step,
                    int count)
{
    const Owners offered{facet, facet, facet, facet};
    constexpr Ints lanes{0, 1, 2, 3};
    do {   // also for a run of no pixels, which is as quick as finding out
        Doubles offeredDepths{};
        for (int i = 0; i < 4; ++i, depth += step) offeredDepths[i] = depth;
        Doubles nearest;
        Owners nearestOwners;
        std::memcpy(&nearest, depths, sizeof nearest);
        std::memcpy(&nearestOwners, owners, sizeof nearestOwners);
        const Longs within = __builtin_convertvector(lanes < Ints{count, count, count, count}, Longs);
        const Longs later = __builtin_convertvector((Ints)(offered >= nearestOwners), Longs);
        const Longs taken = within & ((offeredDepths < nearest) | ((offeredDepths == nearest) & later));
        nearest = taken ? offeredDepths : nearest;
        nearestOwners = __builtin_convertvector(taken, Ints) ? offered : nearestOwners;
        std::memcpy(depths, &nearest, sizeof nearest);
        std::memcpy(owners, &nearestOwners, sizeof nearestOwners);
        depths += 4;
        owners += 4;
        count -= 4;
    } while (count > 0);
}

/// The rows between two heights: strictly below the first, down to the second; see activeRows().
inline int firstRowBelow(double y) { return y < 0.0 ? 0 : static_cast<int>(y) + 1; }

template <bool quad>
inline void fillFacet(const SimpleFacet& facet, const double* points, const FillRows& target)
{
    const Corners top = cornerOf(points, facet.top), bottom = cornerOf(points, facet.bottom),
                  first = cornerOf(points, facet.first);
    int row = firstRowBelow(top.y[0]);
    if (row < target.first) row = target.first;
    const int end = bottom.y[0] < target.end ? static_cast<int>(bottom.y[0]) + 1 : target.end;
    for (; row < end; row += 4) {
        const Doubles rows = all(row) + Doubles{0.0, 1.0, 2.0, 3.0};
        Corners upperA = top, lowerA = bottom;
        const Longs pastFirst = rows > first.y;
        Corners upperB = choose(pastFirst, first, top), lowerB = choose(pastFirst, bottom, first);
        if constexpr (quad) {
            const Corners other = cornerOf(points, facet.other), second = cornerOf(points, facet.second);
            const Longs pastOther = rows > other.y, pastSecond = rows > second.y;
            upperA = choose(pastOther, other, top);
            lowerA = choose(pastOther, bottom, other);
            upperB = choose(pastSecond, second, upperB);
            lowerB = choose(pastSecond, bottom, choose(pastFirst, second, first));
        }
        Runs runs;
        if (!findRuns(cross(upperA, lowerA, rows), cross(upperB, lowerB, rows), target.width, runs)) continue;
        const FillRow* const filled = target.rows + (row - target.first);
        const int lanes = end - row < 4 ? end - row : 4;
        for (int i = 0; i < lanes; ++i)
            fillRun(filled[i].depths + runs.first[i], filled[i].owners + runs.first[i], facet.facet,
                    runs.depth[i], runs.step[i], runs.count[i]);
    }
}

inline void fillAll(const SimpleFacet* facets, std::size_t count, const double* points,
                    const FillRows& target)
{
    constexpr std::size_t ahead = 8;
    for (const SimpleFacet* facet = facets; facet != facets + count; ++facet) {
        if (static_cast<std::size_t>(facets + count - facet) > ahead) {
            __builtin_prefetch(points + 3 * std::size_t{facet[ahead].top});
            __builtin_prefetch(points + 3 * std::size_t{facet[ahead].bottom});
        }
        if (facet->other == SimpleFacet::noCorner) fillFacet<false>(*facet, points, target);
        else fillFacet<true>(*facet, points, target);
    }
}

}   // namespace
}   // namespace belvor
