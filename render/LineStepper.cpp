#include "render/LineStepper.h"

#include "render/LinePixels.h"
#include "render/LineTrace.h"

#include <algorithm>
#include <cmath>

namespace belvor {
namespace {

/// A coordinate between two sample points: the nearer one, of equally near ones the larger, and the other.
struct Neighbours {
    explicit Neighbours(double value) noexcept : drawn(std::floor(value + 0.5)), other(drawn)
    {
        if (const double below = std::floor(value); below != value)
            other = drawn == below ? below + 1.0 : below;
    }
    double drawn, other;   // equal when the coordinate is a sample point's
};

/// The columns of the picture that a segment crosses, counted from its upper end.
class Columns {
public:
    Columns(const LineSegment& segment, int width) noexcept
    {
        const Integers all(segment.from[0], segment.to[0]);
        first = static_cast<int>(std::clamp(all.first, 0.0, static_cast<double>(width)));
        count = static_cast<int>(std::clamp(all.last, -1.0, width - 1.0)) + 1 - first;
        downwards = (segment.to[1] >= segment.from[1]) == (segment.to[0] >= segment.from[0]);
    }
    int column(int number) const noexcept { return downwards ? first + number : first + count - 1 - number; }
    int count;

private:
    int first;
    bool downwards;
};

int clampedStep(double step, int height) noexcept
{
    return static_cast<int>(std::clamp(step, -2.0, static_cast<double>(height)));
}

}   // namespace

/// Where the pixels of one step go.
class LineStepper::Pen {
public:
    Pen(int upperIndex, int pictureWidth, int pictureHeight, const LineVisibility& surfaces,
        LineRow& upperRow, LineRow& lowerRow, LineTrace* shown)
        : upper(upperIndex),
          width(pictureWidth),
          height(pictureHeight),
          visibility(surfaces),
          rows{&upperRow, &lowerRow},
          trace(shown)
    {}

    /// Offers the point in the pixel `column`, `row`, one of the step's two rows, if it shows there.
    void draw(const LineSegment& segment, const Point<3>& point, double column, double row,
              double otherColumn, double otherRow) const
    {
        if (!(column >= 0.0 && column < width && row >= 0.0 && row < height)) return;
        const LineVisibility::Sample drawn{static_cast<int>(column), static_cast<int>(row)};
        const LineVisibility::Sample other{static_cast<int>(otherColumn), static_cast<int>(otherRow)};
        if (!visibility.shows(segment, point, drawn, other)) return;
        rows[drawn.row - upper]->offer(drawn.column, point[2], segment.chain);
        if (trace && column == std::floor(point[0] + 0.5) && row == std::floor(point[1] + 0.5))
            trace->add(segment, point);   // the line's own pixel, not one that its width adds
    }

    const int upper;

private:
    const int width, height;
    const LineVisibility& visibility;
    LineRow* const rows[2];
    LineTrace* const trace;
};

void LineStepper::restart(const LineTable& lines, int pictureWidth, int pictureHeight, int lineWidth,
                          LineTrace* shown)
{
    trace = shown;
    if (trace) trace->restart(lines, lineWidth);
    width = pictureWidth;
    height = pictureHeight;
    reach = lineWidth / 2;
    lives.clear();

    // Segments by their first step (a counting sort: stable, keeps the order of the table).
    const auto slots = static_cast<std::size_t>(height) + 1;
    const std::uint32_t count = lines.segmentCount();
    steps.resize(count);
    stepStarts.assign(slots + 1, 0);
    for (std::uint32_t i = 0; i < count; ++i) {
        steps[i] = stepsOf(lines.segment(i));
        if (steps[i].first <= steps[i].last) ++stepStarts[static_cast<std::size_t>(steps[i].first + 1) + 1];
    }
    for (std::size_t i = 1; i <= slots; ++i) stepStarts[i] += stepStarts[i - 1];
    byFirstStep.resize(stepStarts[slots]);
    std::vector<std::uint32_t> next(stepStarts.begin(), stepStarts.end() - 1);
    for (std::uint32_t i = 0; i < count; ++i)
        if (steps[i].first <= steps[i].last)
            byFirstStep[next[static_cast<std::size_t>(steps[i].first + 1)]++] = {lines.segment(i),
                                                                                 steps[i].last, 0};
}

/// The steps in which a segment may take pixels of the picture; first > last when there are none.
LineStepper::Steps LineStepper::stepsOf(const LineSegment& segment) const noexcept
{
    const double left = std::min(segment.from[0], segment.to[0]),
                 right = std::max(segment.from[0], segment.to[0]);
    const double top = std::min(segment.from[1], segment.to[1]),
                 bottom = std::max(segment.from[1], segment.to[1]);
    const double margin = reach + 2.0;
    if (right < -margin || left > width + margin || bottom < -margin || top > height + margin) return {0, -1};
    double first = std::floor(top), last = std::floor(bottom);
    if (segment.kind != LineSegment::Kind::straight) {
        last += 1.0;   // the nearer pixel may be the one below
    } else if (segment.mostlyAcross()) {
        if (const Columns columns(segment, width);
            columns.count > 0) {   // rounded, they may lie a little outside
            first = std::min(first, std::floor(pointAt(segment, 0, columns.column(0))[1]));
            last = std::max(last, std::floor(pointAt(segment, 0, columns.column(columns.count - 1))[1]));
        }
    } else if (!Integers(left, right).none()) {
        first -= 1.0;
        last += 1.0;
    }
    return {std::max(clampedStep(first - reach, height), -1),
            std::min(clampedStep(last + reach, height), height - 1)};
}

void LineStepper::step(int upper, const LineVisibility& visibility, LineRow& upperRow, LineRow& lowerRow)
{
    const auto slot = static_cast<std::size_t>(upper + 1);
    for (std::uint32_t i = stepStarts[slot]; i < stepStarts[slot + 1]; ++i) {
        Live& live = lives.emplace_back(byFirstStep[i]);
        const LineSegment& segment = live.segment;
        if (upper > -1 || segment.kind != LineSegment::Kind::straight || !segment.mostlyAcross()) continue;
        // It may begin far above the picture: look for its first column within reach.
        const Columns columns(segment, width);
        int low = 0;
        for (int high = columns.count; low < high;) {
            const int middle = low + (high - low) / 2;
            if (std::floor(pointAt(segment, 0, columns.column(middle))[1]) < upper - reach) low = middle + 1;
            else high = middle;
        }
        live.begin = low;
    }
    const Pen pen(upper, width, height, visibility, upperRow, lowerRow, trace);
    std::size_t kept = 0;
    for (Live& live : lives) {
        const LineSegment& segment = live.segment;
        if (segment.kind != LineSegment::Kind::straight) drawSinglePixel(segment, pen);
        else if (segment.mostlyAcross()) drawAcross(live, pen);
        else drawDown(segment, pen);
        if (live.last <= upper) continue;
        if (&lives[kept] != &live) lives[kept] = live;
        ++kept;
    }
    lives.resize(kept);
}

/// A pixel in each column, repeated upwards and downwards.
void LineStepper::drawAcross(Live& live, const Pen& pen) const
{
    const LineSegment& segment = live.segment;
    const Columns columns(segment, width);
    for (int i = live.begin; i < columns.count; ++i) {
        const int column = columns.column(i);
        const Point<3> point = pointAt(segment, 0, column);
        const double above = std::floor(point[1]);
        if (above > pen.upper + reach) break;
        if (above <= pen.upper - reach) live.begin = i + 1;   // the next step is below it
        if (above < pen.upper - reach) continue;
        const Neighbours rows(point[1]);
        const double shift = pen.upper - above;
        pen.draw(segment, point, column, rows.drawn + shift, column, rows.other + shift);
    }
    drawRowsBesideColumns(segment, pen);
}

/// A pixel in each row that is crossed before the first column or behind the last.
void LineStepper::drawRowsBesideColumns(const LineSegment& segment, const Pen& pen) const
{
    if (segment.from[1] == segment.to[1]) return;
    const Integers columns(segment.from[0], segment.to[0]), rows(segment.from[1], segment.to[1]);
    for (int shift = -reach; shift <= reach; ++shift) {
        const double row = pen.upper - shift;
        if (!rows.holds(row) || !rows.nearEnd(row)) continue;
        const Point<3> point = pointAt(segment, 1, row);
        if (!columns.leavesOut(point[0])) continue;
        const Neighbours beside(point[0]);
        pen.draw(segment, point, beside.drawn, pen.upper, beside.other, pen.upper);
    }
}

/// A pixel in each row, repeated to the left and to the right; and in each column that is crossed
/// before the first row or behind the last.
void LineStepper::drawDown(const LineSegment& segment, const Pen& pen) const
{
    const Integers rows(segment.from[1], segment.to[1]);
    if (rows.holds(pen.upper)) {
        const Point<3> point = pointAt(segment, 1, pen.upper);
        const Neighbours beside(point[0]);
        for (int shift = -reach; shift <= reach; ++shift)
            pen.draw(segment, point, beside.drawn + shift, pen.upper, beside.other + shift, pen.upper);
    }
    if ((pen.upper >= rows.first && pen.upper < rows.last) || segment.from[0] == segment.to[0]) return;
    const Integers columns(segment.from[0], segment.to[0]);
    double before = -HUGE_VAL;
    for (const double column : {columns.first, columns.first + 1.0, columns.last - 1.0, columns.last}) {
        if (!(column > before) || !columns.holds(column)) continue;
        before = column;
        const Point<3> point = pointAt(segment, 0, column);
        if (!rows.leavesOut(point[1]) || std::floor(point[1]) != pen.upper) continue;
        const Neighbours below(point[1]);
        for (int shift = -reach; shift <= reach; ++shift)
            pen.draw(segment, point, column + shift, below.drawn, column + shift, below.other);
    }
}

/// The pixel of a point, or the one next to the middle of a short line.
void LineStepper::drawSinglePixel(const LineSegment& segment, const Pen& pen) const
{
    const bool dot = segment.kind == LineSegment::Kind::dot;
    Point<3> point;
    for (int i = 0; i < 3; ++i) point[i] = dot ? segment.from[i] : (segment.from[i] + segment.to[i]) * 0.5;
    const double column = std::floor(point[0] + 0.5), row = std::floor(point[1] + 0.5);
    const int rowReach = dot || segment.mostlyAcross() ? reach : 0;
    const int columnReach = dot || !segment.mostlyAcross() ? reach : 0;
    if (std::abs(pen.upper - row) > rowReach) return;
    for (int shift = -columnReach; shift <= columnReach; ++shift)
        pen.draw(segment, point, column + shift, pen.upper, column + shift, pen.upper);
}

}   // namespace belvor
