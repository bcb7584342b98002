#pragma once

#include "calcore/CoordinateBlock.h"

#include <cstddef>
#include <cstdint>

namespace belvor {

/// Between which rows and between which columns of sample points a vertex lies, in 32 bits: with these
/// alone, most of the facets of a large model are found to hold no sample point.
class ScreenCells {
public:
    /// Whether a picture of that size, in pixels, has few enough columns and rows.
    static constexpr bool fit(int width, int height) noexcept { return width < 0x7FFE && height < 0xFFFE; }

    ScreenCells(int width, int height) noexcept : columns(width), lastRow(height - 1.0) {}

    /// The cells of the first `count` points of a block, pixels right and down.
    void find(const CoordinateBlock& block, std::size_t count, std::uint32_t* cells) const noexcept
    {
        for (std::size_t i = 0; i < count; ++i) {
            const std::uint32_t column = columnCell(block.x[i] - margin),
                                same = columnCell(block.x[i] + margin);
            const bool exact = (column == same) & (block.x[i] > -exactEnough) & (block.x[i] < exactEnough);
            cells[i] = rowCell(block.y[i]) << 16 | (exact ? column : column | anyColumn);
        }
    }

    /// False when no sample point can lie in a facet whose corners lie in these cells, all in front of the
    /// eye.
    template <std::size_t count>
    static bool mayHoldSample(const std::uint32_t (&corners)[count]) noexcept
    {
        std::uint32_t different = corners[0] & anyColumn;
        for (std::size_t i = 1; i < count; ++i) different |= corners[0] ^ corners[i];
        return ((different & 0xFFFF) != 0) & ((different >> 16) != 0);
    }

private:
    // A crossing may be rounded past the corners, by far less than the margin where coordinates are exact
    // enough.
    static constexpr double margin = 1e-6, exactEnough = 1e8;
    static constexpr std::uint32_t anyColumn = 0x8000;   // what lies near one, or far away

    /// 0 left of column 0, then one more from column to column; 0 above row 0, and one on a row lies in the
    /// cell below it.
    std::uint32_t columnCell(double x) const noexcept { return cellOf(x, columns); }
    std::uint32_t rowCell(double y) const noexcept { return cellOf(y, lastRow); }

    static std::uint32_t cellOf(double value, double last) noexcept
    {
        const double low = value > -0.5 ? value : -0.5, inside = low < last ? low : last;
        return static_cast<std::uint32_t>(static_cast<int>(inside) + (value >= 0.0));
    }

    const double columns, lastRow;
};

}   // namespace belvor
