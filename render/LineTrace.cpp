#include "render/LineTrace.h"

#include "render/LinePixels.h"

namespace belvor {
namespace {

int longerAxis(const LineSegment& segment) noexcept { return segment.mostlyAcross() ? 0 : 1; }

/// All pixels of a straight segment, shown or not, by their indices: the integers of its longer axis, and one
/// more at an end where a pixel lies beside them.
class SegmentPixels {
public:
    explicit SegmentPixels(const LineSegment& line) noexcept
        : segment(line),
          axis(longerAxis(line)),
          main(line.from[axis], line.to[axis]),
          low(main.first),
          high(main.last)
    {
        if (segment.kind != LineSegment::Kind::straight) {
            low = high = 0.0;
            return;
        }
        const int other = 1 - axis;
        if (segment.from[other] == segment.to[other]) return;
        const Integers across(segment.from[other], segment.to[other]);
        for (const double value : {across.first, across.first + 1.0, across.last - 1.0, across.last}) {
            if (!across.holds(value)) continue;
            const Point<3> point = pointAt(segment, other, value);
            if (!main.leavesOut(point[axis])) continue;
            const double index = indexOf(point);
            beside[index < main.first ? 0 : 1] = point;
            low = std::min(low, index);
            high = std::max(high, index);
        }
    }

    double indexOf(const Point<3>& point) const noexcept
    {
        if (segment.kind != LineSegment::Kind::straight) return 0.0;
        if (point[axis] < main.first) return main.first - 1.0;
        return point[axis] > main.last ? main.last + 1.0 : point[axis];
    }
    Point<3> pointOf(double index) const noexcept
    {
        if (segment.kind != LineSegment::Kind::straight) return segment.from;
        if (main.holds(index)) return pointAt(segment, axis, index);
        return beside[index < main.first ? 0 : 1];
    }
    /// Whether a straight line between two points of the segment takes its pixel of that index too: one that
    /// passes just between two samples is rounded in another way when it is counted from other ends.
    bool keptBetween(const Point<3>& from, const Point<3>& to, double index) const noexcept
    {
        const Point<3> point = pointOf(index);
        const int grid = main.holds(index) ? axis : 1 - axis, across = 1 - grid;
        LineSegment piece = segment;
        piece.from = from;
        piece.to = to;
        return std::floor(pointAt(piece, grid, point[grid])[across] + 0.5) == std::floor(point[across] + 0.5);
    }
    bool none() const noexcept { return low > high; }
    bool rising() const noexcept { return segment.to[axis] >= segment.from[axis]; }
    double first() const noexcept { return rising() ? low : high; }
    double last() const noexcept { return rising() ? high : low; }

private:
    const LineSegment& segment;
    const int axis;
    const Integers main;
    double low, high;
    Point<3> beside[2];
};

}   // namespace

/// Puts the visible pixels of one segment after another together to paths.
class LineTrace::Tracer {
public:
    using Take = std::function<void(std::uint32_t, Path)>;
    explicit Tracer(const Take& taker) : take(taker) {}

    void add(const LineSegment& segment, std::span<const Run> visible)
    {
        if (segment.kind == LineSegment::Kind::nothing) return end();
        if (!continues(segment)) {
            end();
            place = segment.place;
            joints = {segment.from};
            atStart = true;
        }
        const SegmentPixels pixels(segment);
        if (segment.kind != LineSegment::Kind::straight) {
            open = !visible.empty();   // from its start to its end
        } else if (!pixels.none()) {
            addRuns(segment, pixels, visible);
        }
        joints.push_back(segment.to);
        atStart = atStart && pixels.none();
        if (segment.kind == LineSegment::Kind::dot) end();
    }

    /// The line's end: what is open goes up to it.
    void end()
    {
        if (open) {
            path.insert(path.end(), joints.begin(), joints.end());
            finish();
        }
        joints.clear();
    }

private:
    bool continues(const LineSegment& segment) const noexcept
    {
        return segment.rule == LineRule::curve && !joints.empty() && joints.back() == segment.from;
    }

    void addRuns(const LineSegment& segment, const SegmentPixels& pixels, std::span<const Run> visible)
    {
        const std::size_t count = visible.size();
        for (std::size_t i = 0; i < count; ++i) {
            const Run& run = pixels.rising() ? visible[i] : visible[count - 1 - i];
            const double begin = pixels.rising() ? run.low : run.high,
                         stop = pixels.rising() ? run.high : run.low;
            if (begin == pixels.first() && (open || atStart)) {
                path.insert(path.end(), joints.begin(), joints.end());
                open = true;
            } else {
                close();
                path = {pixels.pointOf(begin)};
                open = true;
            }
            lastPoint = pixels.pointOf(stop);
            // Whether the part goes up to the end of the segment only the next one tells.
            const Point<3> ends[] = {lastPoint, segment.to};
            keepPixels(pixels, begin, stop, std::span(ends).first(stop == pixels.last() ? 2 : 1));
            joints.clear();
            atStart = false;
            if (stop != pixels.last()) close();
        }
        const bool reachesEnd =
            count != 0 && (pixels.rising() ? visible[count - 1].high : visible[0].low) == pixels.last();
        if (!reachesEnd) close();
        joints.clear();
    }

    /// Adds points of the segment between the path's end and `ends`, until a straight line to each of these
    /// takes the segment's pixels from `first` to `last`. Few are needed.
    void keepPixels(const SegmentPixels& pixels, double first, double last, std::span<const Point<3>> ends)
    {
        const double step = last < first ? -1.0 : 1.0;
        for (double index = first; (last - index) * step >= 0.0; index += step) {
            const Point<3> point = pixels.pointOf(index), start = path.back();
            const bool kept = std::all_of(ends.begin(), ends.end(), [&](const Point<3>& to) {
                return point == start || point == to || pixels.keptBetween(start, to, index);
            });
            if (kept) continue;
            keepPixels(pixels, first, index, std::span(&point, 1));
            path.push_back(point);
            first = index + step;
        }
    }

    /// Ends the open path at its last pixel.
    void close()
    {
        if (!open) return;
        if (path.back() != lastPoint) path.push_back(lastPoint);
        finish();
    }

    void finish()
    {
        if (path.size() == 1) path.push_back(path[0]);
        take(place, path);
        path.clear();
        open = false;
    }

    const Take& take;
    std::uint32_t place = 0;
    std::vector<Point<3>> path;     // the open one
    std::vector<Point<3>> joints;   // of segments since the latest pixel
    Point<3> lastPoint;             // the line's, in that pixel
    bool open = false;              // that pixel belongs to the path
    bool atStart = false;           // there is no such pixel yet
};

void LineTrace::restart(const LineTable& lines, int lineWidth, unsigned threads)
{
    table = &lines;
    width = lineWidth;
    parts.assign(threads, Part());
}

/// The pixels of a segment come one after another, those beside its ends apart.
void LineTrace::Part::add(const LineSegment& segment, const Point<3>& point)
{
    const auto index = static_cast<std::int32_t>(SegmentPixels(segment).indexOf(point));
    if (!runs.empty() && runs.back().place == segment.place) {
        Run& run = runs.back();
        if (index >= run.low - 1 && index <= run.high + 1) {
            run.low = std::min(run.low, index);
            run.high = std::max(run.high, index);
            return;
        }
    }
    runs.push_back({segment.place, index, index});
}

/// All runs in order, without those that touch.
std::vector<LineTrace::Run> LineTrace::mergedRuns(Pauses& pauses) const
{
    std::vector<Run> runs;
    for (const Part& part : parts)
        for (const Run& run : part.runs) {
            pauses.step();
            runs.push_back(run);
        }
    std::sort(runs.begin(), runs.end(), [&pauses](const Run& a, const Run& b) {
        pauses.step();
        return a.place != b.place ? a.place < b.place : a.low < b.low;
    });
    std::size_t kept = 0;
    for (const Run& run : runs) {
        pauses.step();
        if (kept != 0 && runs[kept - 1].place == run.place && run.low <= runs[kept - 1].high + 1)
            runs[kept - 1].high = std::max(runs[kept - 1].high, run.high);
        else runs[kept++] = run;
    }
    runs.resize(kept);
    return runs;
}

void LineTrace::forEachPath(const std::function<void(std::uint32_t, Path)>& take,
                            const std::function<void()>& pause) const
{
    if (!table) return;
    Pauses pauses(pause);
    const std::vector<Run> runs = mergedRuns(pauses);
    Tracer tracer(take);
    std::size_t at = 0;
    for (std::uint32_t place = 0; place < table->all().size(); ++place) {
        const std::size_t first = at;
        while (at < runs.size() && runs[at].place == place) ++at;
        pauses.step(4 + 4 * (at - first));
        tracer.add(table->all()[place], std::span(runs).subspan(first, at - first));
    }
    tracer.end();
}

}   // namespace belvor
