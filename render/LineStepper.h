#pragma once

#include "render/LineRow.h"
#include "render/LineTable.h"
#include "render/LineVisibility.h"

#include <cstdint>
#include <vector>

namespace belvor {

class LineTrace;

/// Draws the lines of a table from the top, a step for each two rows that follow one another: a
/// line between two rows of sample points needs the surfaces of both.
class LineStepper {
public:
    /// Makes ready for the first step of a picture of that size, lines `lineWidth` pixels wide.
    /// `trace`, unless null, takes what shows, until the next call. Throws std::bad_alloc.
    void restart(const LineTable& table, int width, int height, int lineWidth, LineTrace* trace = nullptr);

    /// Draws what lies on row `upper` or between it and the next one; to be called for every
    /// `upper` from −1 to height − 1. `visibility` knows the surfaces of both rows.
    void step(int upper, const LineVisibility& visibility, LineRow& upperRow, LineRow& lowerRow);

private:
    /// A segment that is being drawn.
    struct Live {
        LineSegment segment;
        int last;    // step
        int begin;   // of one that runs mostly across: its columns before this one, from its upper end, are
                     // done
    };
    struct Steps {
        int first, last;
    };
    class Pen;

    Steps stepsOf(const LineSegment& segment) const noexcept;
    void drawAcross(Live& live, const Pen& pen) const;
    void drawRowsBesideColumns(const LineSegment& segment, const Pen& pen) const;
    void drawDown(const LineSegment& segment, const Pen& pen) const;
    void drawSinglePixel(const LineSegment& segment, const Pen& pen) const;

    int width = 0, height = 0;
    LineTrace* trace = nullptr;
    int reach = 0;   // pixels to each side of a line's middle
    std::vector<std::uint32_t> stepStarts;
    LargeVector<Live> byFirstStep;   // side by side in the order of use
    LargeVector<Steps> steps;
    std::vector<Live> lives;
};

}   // namespace belvor
