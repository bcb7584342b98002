#pragma once

#include "render/LineTable.h"
#include "render/Pauses.h"

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

namespace belvor {

/// The parts of lines that surfaces do not hide, gathered during one render whose style names this object.
/// Lines do not hide one another here.
class LineTrace {
    /// Visible pixels side by side, by their indices along the segment's longer axis.
    struct Run {
        std::uint32_t place;   // of the segment
        std::int32_t low, high;
    };

public:
    /// What one thread of the render gathers.
    class Part {
    public:
        /// The pixel that the line itself has at `point` shows.
        void add(const LineSegment& segment, const Point<3>& point);

    private:
        friend class LineTrace;
        std::vector<Run> runs;
    };
    /// A part: pixels right, pixels down. At least two points, which are equal for a single pixel.
    using Path = std::span<const Point<3>>;

    /// Called by a render before its first row; `lines` must outlive forEachPath().
    void restart(const LineTable& lines, int lineWidth, unsigned threads);
    /// Of the thread of that index; stays where it is until the next render.
    Part* part(unsigned thread) noexcept { return &parts[thread]; }

    int lineWidth() const noexcept { return width; }

    /// Gives each part to `take` with a place of its line, line by line and along each. A part ends at the
    /// line's own points in its first and last pixel, and where it holds the line's first or last pixel at
    /// the line's end. Drawn by the rule for lines, it takes the pixels that show. `pause` is called after
    /// every millisecond or so. Throws std::bad_alloc and what `take` and `pause` throw.
    void forEachPath(const std::function<void(std::uint32_t place, Path path)>& take,
                     const std::function<void()>& pause) const;

private:
    class Tracer;

    std::vector<Run> mergedRuns(Pauses& pauses) const;

    const LineTable* table = nullptr;
    int width = 1;
    std::vector<Part> parts;
};

}   // namespace belvor
