#pragma once

#include <algorithm>
#include <cstddef>

namespace belvor {

/// A picture cut into bands of rows, each drawn as a whole.
struct Bands {
    int width, height;   ///< Of the picture.
    int rowBits;         ///< A band has 2^rowBits rows, the last one maybe fewer.
    int margin = 0;      ///< Rows of each neighbour that are drawn with a band, as lines need them: 0 or 1.

    int rows() const noexcept { return 1 << rowBits; }
    std::size_t count() const noexcept
    {
        return static_cast<std::size_t>(height + rows() - 1) >> static_cast<unsigned>(rowBits);
    }
    /// The rows `first` to `end` − 1.
    struct Rows {
        int first, end;
    };
    Rows rowsOf(std::size_t band) const noexcept
    {
        const int first = static_cast<int>(band) << rowBits;
        return {first, std::min(first + rows(), height)};
    }
    /// The same with the margins.
    Rows drawnRowsOf(std::size_t band) const noexcept
    {
        const Rows own = rowsOf(band);
        return {std::max(own.first - margin, 0), std::min(own.end + margin, height)};
    }
    /// The first and last band with which rows of the picture are drawn.
    int firstBandOf(int row) const noexcept { return std::max(row - margin, 0) >> rowBits; }
    int lastBandOf(int row) const noexcept { return std::min(row + margin, height - 1) >> rowBits; }
};

}   // namespace belvor
