#pragma once

#include "render/LineTable.h"

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

namespace belvor {

/// The parts of lines that surfaces do not hide, gathered during one render whose style names this object.
/// Lines do not hide one another here. Used by the thread of the render.
class LineTrace {
public:
    /// A part: pixels right, pixels down. At least two points, which are equal for a single pixel.
    using Path = std::span<const Point<3>>;

    /// Called by a render before its first row; `lines` must outlive forEachPath().
    void restart(const LineTable& lines, int lineWidth);
    /// The pixel that the line itself has at `point` shows.
    void add(const LineSegment& segment, const Point<3>& point);

    int lineWidth() const noexcept { return width; }
    std::uint32_t chainCount() const noexcept { return table ? table->chainCount() : 0; }

    /// Gives each part to `take`, chain by chain and along each. A part ends at the line's own points in its
    /// first and last pixel, and where it holds the line's first or last pixel at the line's end. Throws
    /// std::bad_alloc and what `take` throws.
    void forEachPath(const std::function<void(std::uint32_t chain, Path path)>& take);

private:
    /// Visible pixels side by side, by their indices along the segment's longer axis.
    struct Run {
        std::uint32_t segment;
        std::int32_t low, high;
    };
    class Tracer;

    void mergeRuns();

    const LineTable* table = nullptr;
    int width = 1;
    std::vector<Run> runs;
    std::vector<std::uint32_t> lastRuns;   // by segment
};

}   // namespace belvor
