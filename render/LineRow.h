#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace belvor {

/// The nearest line of each pixel of a row.
class LineRow {
public:
    static constexpr std::uint32_t noPlace = 0xFFFFFFFF;

    /// Makes a row of `width` pixels without lines. Throws std::bad_alloc.
    void clear(int width)
    {
        const auto size = static_cast<std::size_t>(width);
        if (!hasLines && places.size() == size) return;
        depths.assign(size, std::numeric_limits<double>::max());
        places.assign(size, noPlace);
        hasLines = false;
    }
    /// The nearer line keeps a pixel, of two equally near ones the later.
    void offer(int column, double depth, std::uint32_t place) noexcept
    {
        const auto i = static_cast<std::size_t>(column);
        if (!(depth < depths[i]) && !(depth == depths[i] && place >= places[i])) return;
        depths[i] = depth;
        places[i] = place;
        hasLines = true;
    }
    bool empty() const noexcept { return !hasLines; }
    /// noPlace where no line is.
    std::uint32_t place(std::size_t column) const noexcept { return places[column]; }
    double depth(std::size_t column) const noexcept { return depths[column]; }

private:
    std::vector<double> depths;
    std::vector<std::uint32_t> places;
    bool hasLines = true;   // or may have
};

}   // namespace belvor
