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
    /// Whether a line that shows takes the pixel: the nearer one does, of two equally near ones the later.
    bool wouldTake(int column, double depth, std::uint32_t place) const noexcept
    {
        const auto i = static_cast<std::size_t>(column);
        const bool nearer = depth < depths[i], asNear = depth == depths[i], later = place >= places[i];
        return nearer | (asNear & later);
    }
    /// Draws a line, if `shows` and if it would take the pixel. Without a branch.
    void offer(int column, double depth, std::uint32_t place, bool shows) noexcept
    {
        const auto i = static_cast<std::size_t>(column);
        const bool drawn = shows & wouldTake(column, depth, place);
        const double depthBefore = depths[i];
        const std::uint32_t placeBefore = places[i];
        depths[i] = drawn ? depth : depthBefore;
        places[i] = drawn ? place : placeBefore;
        hasLines |= drawn;
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
