#pragma once

#include <cstdint>

namespace belvor {

/// One side of a facet where it crosses the current row.
struct Crossing {
    double x;       ///< Pixels.
    double depth;   ///< Screen depth there.
};

/// A run of pixels of one facet in a row: the columns `first` to `end` − 1, none when they
/// are equal; `depth` at the first, growing by one addition of `step` a pixel.
struct SpanFill {
    double depth, step;
    std::uint32_t facet;   ///< Its index in the store.
    int first, end;
};

/// Columns `first` to `end` − 1 of a row; none when first = end.
struct Columns {
    int first, end;
    friend bool operator==(const Columns&, const Columns&) noexcept = default;
};

/// trunc(x) + 1 as a column, not below 0: the first column right of an edge at `x`. The
/// truncation is towards zero, so an edge between −1 and 0 leaves column 0 out. `x` < 2^31.
constexpr int columnRightOf(double x) noexcept
{
    if (!(x > -1.0)) return 0;
    return static_cast<int>(x) + 1;
}

/// The pixels of a row of `width` pixels between two edges: those with left < i <= right,
/// for edges that are not negative. An edge that is not a number covers nothing.
constexpr Columns coveredColumns(double left, double right, int width) noexcept
{
    if (!(right > 0.0) || !(left < width - 1)) return {0, 0};
    return {columnRightOf(left), right >= width ? width : static_cast<int>(right) + 1};
}

/// The pixels of a row of `width` pixels between two crossings of a facet.
inline SpanFill spanBetween(std::uint32_t facet, const Crossing& left, const Crossing& right,
                            int width) noexcept
{
    const Columns columns = coveredColumns(left.x, right.x, width);
    if (columns.first >= columns.end) return {0.0, 0.0, facet, 0, 0};
    double step = right.depth - left.depth;
    if (const double length = right.x - left.x; length != 0.0) step /= length;
    return {left.depth + (columns.first - left.x) * step, step, facet, columns.first, columns.end};
}

/// The pixels from the left border to an edge.
constexpr Columns columnsUpTo(double right, int width) noexcept
{
    if (!(right > -1.0)) return {0, 0};
    return {0, right >= width ? width : static_cast<int>(right) + 1};
}

/// The pixels from an edge to the right border.
constexpr Columns columnsFrom(double left, int width) noexcept
{
    if (!(left < width)) return {0, 0};
    const int first = columnRightOf(left);
    return first < width ? Columns{first, width} : Columns{0, 0};
}

}   // namespace belvor
