#include "render/LinePainter.h"

#include "render/LinePixels.h"
#include "scene/Camera.h"

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

/// The same of a coordinate with few digits.
struct NearSamples {
    explicit NearSamples(double value) noexcept : drawn(floorOf(value + 0.5))
    {
        const int below = floorOf(value);
        other = below == value ? drawn : 2 * below + 1 - drawn;
    }
    int drawn, other;
};

/// Whether a straight segment crosses four columns and four rows at most, near the picture.
bool isShort(const LineSegment& segment) noexcept
{
    constexpr double longest = 3.0, farthest = fewDigits / 2;
    const double dx = std::abs(segment.to[0] - segment.from[0]),
                 dy = std::abs(segment.to[1] - segment.from[1]);
    return dx <= longest && dy <= longest && (dx > 0.0 || dy > 0.0) && std::abs(segment.from[0]) < farthest
           && std::abs(segment.from[1]) < farthest;
}

/// The columns of the picture that a segment crosses, counted from its upper end.
class CrossedColumns {
public:
    CrossedColumns(const LineSegment& segment, int width) noexcept
    {
        const Integers all(segment.from[0], segment.to[0]);
        first = static_cast<int>(std::clamp(all.first, 0.0, static_cast<double>(width)));
        count = static_cast<int>(std::clamp(all.last, -1.0, width - 1.0)) + 1 - first;
        downwards = (segment.to[1] >= segment.from[1]) == (segment.to[0] >= segment.from[0]);
    }
    int column(int number) const noexcept { return downwards ? first + number : first + count - 1 - number; }

    /// How many come before those whose pixels lie on `row` or below it.
    int above(const LineSegment& segment, int row) const noexcept
    {
        int low = 0;
        for (int high = count; low < high;) {
            const int middle = low + (high - low) / 2;
            if (std::floor(pointAt(segment, 0, column(middle))[1] + 0.5) < row) low = middle + 1;
            else high = middle;
        }
        return low;
    }
    int count;

private:
    int first;
    bool downwards;
};

/// The integers of a range that are one of the two at either end, each once.
template <class Take>
void forEachNearEnds(const Integers& range, Take take)
{
    double before = -HUGE_VAL;
    for (const double value : {range.first, range.first + 1.0, range.last - 1.0, range.last}) {
        if (!(value > before) || !range.holds(value)) continue;
        before = value;
        take(value);
    }
}

}   // namespace

LinePainter::LinePainter(const Model& model, const Camera& camera, const LineTable& lines,
                         const LineStyle& style, LineTrace::Part* shown)
    : visibility(model, camera, lines, style.outlines),
      table(lines),
      trace(shown),
      width(static_cast<int>(camera.width)),
      reach(style.width / 2)
{}

void LinePainter::setRows(Bands::Rows own, LineRow* rows, Bands::Rows drawn,
                          const PixelRow* surfaces) noexcept
{
    first = own.first;
    end = own.end;
    lineRows = rows;
    keptCount = candidateCount = 0;
    visibility.setRows(surfaces, drawn.first, drawn.end);
}

void LinePainter::draw(const LineSegment* segments, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i) draw(segments[i]);
}

void LinePainter::draw(const LineSegment& segment)
{
    // One that spans many bands stands in their common list: it may have no pixel in this one.
    const double top = std::min(segment.from[1], segment.to[1]),
                 bottom = std::max(segment.from[1], segment.to[1]);
    const double margin = reach + 2.0 + std::max(std::abs(top), std::abs(bottom)) * 0x1p-48;
    if (bottom < first - margin || top > end + margin) return;
    if (segment.kind != LineSegment::Kind::straight) drawSinglePixel(segment);
    else if (!trace && isShort(segment))
        segment.mostlyAcross() ? drawShort<0>(segment) : drawShort<1>(segment);
    else if (segment.mostlyAcross()) drawAcross(segment);
    else drawDown(segment);
}

/// Notes the point as a candidate for the pixel `column`, `row`, if that is one of the rows.
void LinePainter::put(const LineSegment& segment, const Point<3>& point, double column, double row,
                      double otherColumn, double otherRow)
{
    if (!(column >= 0.0 && column < width && row >= first && row < end)) return;
    put(segment, point, LineVisibility::Sample{static_cast<int>(column), static_cast<int>(row)},
        LineVisibility::Sample{static_cast<int>(otherColumn), static_cast<int>(otherRow)});
}

void LinePainter::put(const LineSegment& segment, const Point<3>& point, LineVisibility::Sample drawn,
                      LineVisibility::Sample other)
{
    if (keptCount == LineVisibility::mostPixels) finish();
    LinePixel& pixel = candidates[candidateCount];
    pixel = {point,
             segment.place,
             {segment.ownFacets[0], segment.ownFacets[1]},
             {static_cast<std::int8_t>(other.column - drawn.column),
              static_cast<std::int8_t>(other.row - drawn.row)},
             segment.rule,
             segment.hasMoreFacets,
             false};
    candidateCount += keep(pixel, drawn);
}

/// Puts a pixel aside unless another line hides it, which is cheaper to find out than whether it shows. There
/// must be room, and `pixel` stays where it is until finish(). Returns whether it did.
bool LinePainter::keep(const LinePixel& pixel, LineVisibility::Sample at)
{
    kept[keptCount] = {&pixel, at};
    const bool taken = rowAt(at).wouldTake(at.column, pixel.point[2], pixel.place) | (trace != nullptr);
    keptCount += taken;
    return taken;
}

/// Those of the list of this band have a row of it unless the width repeats them.
void LinePainter::draw(const LinePixel* pixels, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i) {
        const LinePixel& pixel = pixels[i];
        const int column = columnOf(pixel), row = rowOf(pixel);
        if (reach == 0) {
            if (keptCount == LineVisibility::mostPixels) finish();
            keep(pixel, {column, row});
            continue;
        }
        for (int shift = -reach; shift <= reach; ++shift) {
            const int down = pixel.repeatedDown ? shift : 0;
            const LineVisibility::Sample at{column + shift - down, row + down};
            if (!(at.column >= 0 && at.column < width && at.row >= first && at.row < end)) continue;
            if (keptCount == LineVisibility::mostPixels) finish();
            keep(pixel, at);
        }
    }
}

/// Draws what is put aside: the nearest that surfaces do not hide. Many at a time, so that what one reads
/// from memory is on its way while others are looked at: that takes longer than all else. Few branches: what
/// a pixel is like tells nothing of the next one.
void LinePainter::finish()
{
    bool shows[LineVisibility::mostPixels];
    visibility.find(kept, keptCount, shows);
    for (std::size_t i = 0; i < keptCount; ++i) {
        const auto [pixel, at] = kept[i];
        rowAt(at).offer(at.column, pixel->point[2], pixel->place, shows[i]);
        if (trace && shows[i] && at.column == std::floor(pixel->point[0] + 0.5)
            && at.row == std::floor(pixel->point[1] + 0.5))
            trace->add(table.all()[pixel->place],
                       pixel->point);   // the line's own, not one that its width adds
    }
    keptCount = candidateCount = 0;
}

/// Few pixels, as most lines of a large model have: the same that the other ways find, without looking for
/// where the rows and the picture begin. `axis` is the longer one.
template <int axis>
void LinePainter::drawShort(const LineSegment& segment)
{
    constexpr int minor = 1 - axis;
    const double a = segment.from[axis], b = segment.to[axis], c = segment.from[minor], d = segment.to[minor];
    const int low = ceilOf(std::min(a, b)), high = floorOf(std::max(a, b));
    for (int line = low; line <= high; ++line) {
        const Point<3> point = pointAt(segment, axis, line);
        const NearSamples across(point[minor]);
        putRepeated<axis>(segment, point, {line, across.drawn}, {line, across.other});
    }
    if (c == d) return;
    const int last = floorOf(std::max(c, d));
    for (int line = ceilOf(std::min(c, d)); line <= last; ++line) {
        const Point<3> point = pointAt(segment, minor, line);
        if (low <= high && point[axis] >= low && point[axis] <= high) continue;
        const NearSamples along(point[axis]);
        putRepeated<axis>(segment, point, {along.drawn, line}, {along.other, line});
    }
}

/// Places are given along the axis and across it, and repeated across it.
template <int axis>
void LinePainter::putRepeated(const LineSegment& segment, const Point<3>& point, std::array<int, 2> drawn,
                              std::array<int, 2> other)
{
    constexpr std::size_t x = axis, y = 1 - axis;
    for (int shift = -reach; shift <= reach; ++shift) {
        const int across = axis == 0 ? 0 : shift, down = axis == 0 ? shift : 0;
        const LineVisibility::Sample sample{drawn[x] + across, drawn[y] + down};
        if (sample.column >= 0 && sample.column < width && sample.row >= first && sample.row < end)
            put(segment, point, sample, LineVisibility::Sample{other[x] + across, other[y] + down});
    }
}

/// A pixel in each column, repeated upwards and downwards.
void LinePainter::drawAcross(const LineSegment& segment)
{
    constexpr int few = 8;   // too few to look for the first
    const CrossedColumns columns(segment, width);
    int begin = 0, stop = columns.count;
    if (stop > few) {
        begin = columns.above(segment, first - reach);
        stop = columns.above(segment, end + reach);
    }
    for (int i = begin; i < stop; ++i) {
        const int column = columns.column(i);
        const Point<3> point = pointAt(segment, 0, column);
        const Neighbours rows(point[1]);
        for (int shift = -reach; shift <= reach; ++shift)
            put(segment, point, column, rows.drawn + shift, column, rows.other + shift);
    }
    if (segment.from[1] != segment.to[1]) drawRowsBesideColumns(segment);
}

/// A pixel in each row that is crossed before the first column or behind the last.
void LinePainter::drawRowsBesideColumns(const LineSegment& segment)
{
    const Integers rows(segment.from[1], segment.to[1]);
    if (rows.none()) return;
    const Integers columns(segment.from[0], segment.to[0]);
    forEachNearEnds(rows, [&](double row) {
        const Point<3> point = pointAt(segment, 1, row);
        if (!columns.leavesOut(point[0])) return;
        const Neighbours beside(point[0]);
        for (int shift = -reach; shift <= reach; ++shift)
            put(segment, point, beside.drawn, row + shift, beside.other, row + shift);
    });
}

/// A pixel in each row, repeated to the left and to the right.
void LinePainter::drawDown(const LineSegment& segment)
{
    const Integers rows(segment.from[1], segment.to[1]);
    const int from = static_cast<int>(
                  std::clamp(rows.first, static_cast<double>(first), static_cast<double>(end))),
              to = static_cast<int>(std::clamp(rows.last, first - 1.0, end - 1.0));
    for (int row = from; row <= to; ++row) {
        const Point<3> point = pointAt(segment, 1, row);
        const Neighbours beside(point[0]);
        for (int shift = -reach; shift <= reach; ++shift)
            put(segment, point, beside.drawn + shift, row, beside.other + shift, row);
    }
    if (segment.from[0] != segment.to[0]) drawColumnsBesideRows(segment);
}

/// A pixel in each column that is crossed before the first row or behind the last.
void LinePainter::drawColumnsBesideRows(const LineSegment& segment)
{
    const Integers columns(segment.from[0], segment.to[0]);
    if (columns.none()) return;
    const Integers rows(segment.from[1], segment.to[1]);
    forEachNearEnds(columns, [&](double column) {
        const Point<3> point = pointAt(segment, 0, column);
        if (!rows.leavesOut(point[1])) return;
        const Neighbours below(point[1]);
        for (int shift = -reach; shift <= reach; ++shift)
            put(segment, point, column + shift, below.drawn, column + shift, below.other);
    });
}

/// The pixel of a point, or the one next to the middle of a short line.
void LinePainter::drawSinglePixel(const LineSegment& segment)
{
    const bool dot = segment.kind == LineSegment::Kind::dot;
    Point<3> point;
    for (int i = 0; i < 3; ++i) point[i] = dot ? segment.from[i] : (segment.from[i] + segment.to[i]) * 0.5;
    if (reach == 0 && std::abs(point[0]) < fewDigits && std::abs(point[1]) < fewDigits) {
        const LineVisibility::Sample sample{floorOf(point[0] + 0.5), floorOf(point[1] + 0.5)};
        if (sample.column >= 0 && sample.column < width && sample.row >= first && sample.row < end)
            put(segment, point, sample, sample);
        return;
    }
    const double column = std::floor(point[0] + 0.5), row = std::floor(point[1] + 0.5);
    const int rowReach = dot || segment.mostlyAcross() ? reach : 0;
    const int columnReach = dot || !segment.mostlyAcross() ? reach : 0;
    for (int up = -rowReach; up <= rowReach; ++up)
        for (int shift = -columnReach; shift <= columnReach; ++shift)
            put(segment, point, column + shift, row + up, column + shift, row + up);
}

}   // namespace belvor
