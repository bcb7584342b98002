#pragma once

#include "render/LineRow.h"
#include "render/LineTable.h"
#include "render/LineTrace.h"
#include "render/LineVisibility.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace belvor {

/// Draws the lines of a table into rows of a picture, for one thread. `model`, `lines` and what `style`
/// names must outlive it.
class LinePainter {
public:
    /// `trace`, unless null, takes what shows. Throws std::bad_alloc.
    LinePainter(const Model& model, const Camera& camera, const LineTable& lines, const LineStyle& style,
                LineTrace::Part* trace);

    /// The rows that are drawn into: `first` to `end` − 1, the lines of `first` in `rows[0]`. `surfaces` are
    /// those of `drawn`, which holds these rows and, in the picture, the one above and the one below.
    void setRows(Bands::Rows own, LineRow* rows, Bands::Rows drawn, const PixelRow* surfaces) noexcept;

    /// Draw what segments and pixels of lines have in these rows, in any order. The rows are complete after
    /// finish().
    void draw(const LineSegment* segments, std::size_t count);
    void draw(const LinePixel* pixels, std::size_t count);
    void finish();

private:
    void draw(const LineSegment& segment);
    template <int axis>
    void drawShort(const LineSegment& segment);
    template <int axis>
    void putRepeated(const LineSegment& segment, const Point<3>& point, std::array<int, 2> drawn,
                     std::array<int, 2> other);
    void drawAcross(const LineSegment& segment);
    void drawRowsBesideColumns(const LineSegment& segment);
    void drawDown(const LineSegment& segment);
    void drawColumnsBesideRows(const LineSegment& segment);
    void drawSinglePixel(const LineSegment& segment);
    void put(const LineSegment& segment, const Point<3>& point, double column, double row, double otherColumn,
             double otherRow);
    void put(const LineSegment& segment, const Point<3>& point, LineVisibility::Sample drawn,
             LineVisibility::Sample other);

    bool keep(const LinePixel& pixel, LineVisibility::Sample at);
    LineRow& rowAt(LineVisibility::Sample at) const noexcept { return lineRows[at.row - first]; }

    LineVisibility visibility;
    const LineTable& table;
    LineTrace::Part* const trace;
    const int width, reach;   // pixels; of the picture, to each side of a line's middle
    int first = 0, end = 0;
    LineRow* lineRows = nullptr;
    LineVisibility::Pixel kept[LineVisibility::mostPixels];   // put aside, to be drawn together
    std::size_t keptCount = 0;
    LinePixel candidates[LineVisibility::mostPixels];   // of segments, those that are put aside
    std::size_t candidateCount = 0;
};

}   // namespace belvor
