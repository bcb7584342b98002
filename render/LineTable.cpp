#include "render/LineTable.h"

#include "platform/Prefetch.h"
#include "render/LinePixels.h"
#include "render/Outlines.h"
#include "render/Pauses.h"
#include "render/Projection.h"
#include "render/TinyLine.h"
#include "scene/Camera.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <new>
#include <span>

namespace belvor {
namespace {

bool isFinite(const Point<3>& p) noexcept
{
    return p[0] * 0.0 + p[1] * 0.0 + p[2] * 0.0 == 0.0;   // of what is not finite, not a number
}

/// Whether an integer lies between the two, themselves included.
bool holdsInteger(double a, double b) noexcept
{
    const double low = std::min(a, b), high = std::max(a, b);
    if (high < fewDigits && high > -fewDigits) return floorOf(high) >= low;
    return std::ceil(low) <= high;
}

/// Whether a segment takes any pixel by the rules of columns and rows, or as a dot.
bool takesPixel(const LineSegment& segment) noexcept
{
    if (segment.kind != LineSegment::Kind::straight) return segment.kind == LineSegment::Kind::dot;
    const double x0 = segment.from[0], y0 = segment.from[1], x1 = segment.to[0], y1 = segment.to[1];
    const bool column = x0 != x1 && holdsInteger(x0, x1), row = y0 != y1 && holdsInteger(y0, y1);
    return column | row;
}

/// The part of a straight line that a camera can project: in perspective at least a little in
/// front of the eye.
class EyeCut {
public:
    explicit EyeCut(const Camera& view)
        : camera(view),
          perspective(view.describe().kind == 0),
          limit(view.radius * 0x1p-20),
          sureDepth(perspective ? -view.scale / (2.0 * limit) : -HUGE_VAL),
          eyeDepth(perspective ? 0.0 : HUGE_VAL)
    {}

    bool inFront(const Point<3>& p) const noexcept { return !perspective || ahead(p) >= 0.0; }

    /// False when nothing is left.
    bool cut(Point<3>& a, Point<3>& b) const noexcept
    {
        if (!perspective) return true;
        const double aheadA = ahead(a), aheadB = ahead(b);
        if (aheadA >= 0.0 && aheadB >= 0.0) return true;
        if (!(aheadA >= 0.0) && !(aheadB >= 0.0)) return false;
        if (aheadA >= 0.0) b = a + (b - a) * (aheadA / (aheadA - aheadB));
        else a = b + (a - b) * (aheadB / (aheadB - aheadA));
        return true;
    }

    /// Whether the screen depth alone, which is finite, tells that inFront() is true.
    bool surelyInFront(double depth) const noexcept { return (depth < eyeDepth) & (depth > sureDepth); }

private:
    double ahead(const Point<3>& p) const noexcept
    {
        return dot(camera.frame.forward, p - camera.eye) - limit;
    }

    const Camera& camera;
    const bool perspective;
    const double limit;                 // ahead of the eye
    const double sureDepth, eyeDepth;   // of twice the limit; screen depths in front of the eye lie below it
};

}   // namespace

/// Fills a table, in pieces of it on any thread.
class LineTable::Collector {
public:
    Collector(LineTable& filled, const Model& scene, const Camera& view, const LineStyle& lines,
              const FacetShade* paints, const Sharing& threads, const std::function<void()>& pauses)
        : table(filled),
          model(scene),
          camera(view),
          style(lines),
          shades(paints),
          sharing(threads),
          pause(pauses),
          eye(view),
          reach(lines.width / 2),
          listsPixels(!lines.trace)
    {}

    void run(const Point<3>* projected)
    {
        const std::uint32_t curveCount = style.curves ? model.curveCount() : 0;
        const std::uint32_t points = curveCount == 0 ? 0 : endOf(model.curve(curveCount - 1));
        const std::uint32_t edges = style.outlines ? style.outlines->size() : 0;
        const std::size_t places = std::size_t{points} + edges;
        if (model.facetCount() + places >= noFacet) throw std::bad_alloc();   // owners have 32 bits
        table.curvePlaces = points;
        resizeInSlices(table.curves, points, pause);
        table.kept.clear();
        resizeInSlices(table.kept, style.trace ? places : 0, pause);
        if (points != 0) {
            projectCurves(points);
            const std::size_t piece = std::max<std::size_t>(sharing.pieceSize * curveCount / points, 1);
            forPieces(curveCount, piece, [&](std::size_t i, unsigned thread, Pauses& pauses) {
                addCurve(static_cast<std::uint32_t>(i), thread, pauses);
            });
        }
        const std::size_t groups = style.outlines ? style.outlines->groupCount() : 0;
        constexpr std::size_t groupsAtOnce = 8;
        forPieces((groups + groupsAtOnce - 1) / groupsAtOnce,
                  std::max<std::size_t>(sharing.pieceSize / (groupsAtOnce * Outlines::groupSize), 1),
                  [&](std::size_t part, unsigned thread, Pauses&) {
                      const std::size_t first = part * groupsAtOnce;
                      addEdges(first, std::min(first + groupsAtOnce, groups), projected, thread);
                  });
    }

private:
    /// What the pixels of a line have in common, as in LineSegment.
    struct Line {
        std::uint32_t place, ownFacets[2];
        LineRule rule;
        bool hasMoreFacets;
    };
    static LineSegment segmentOf(const Line& line) noexcept
    {
        return {{},
                {},
                line.place,
                {line.ownFacets[0], line.ownFacets[1]},
                LineSegment::Kind::nothing,
                line.rule,
                line.hasMoreFacets};
    }
    static std::uint32_t endOf(const Curve& curve) noexcept { return curve.firstPoint + curve.pointCount; }

    template <class Work>
    void forPieces(std::size_t count, std::size_t pieceSize, Work work)
    {
        Workers::ofProcess().forPieces(sharing.threads, count, pieceSize,
                                       [&](std::size_t first, std::size_t end, const Workers::Turn& turn) {
                                           if (turn.thread == 0) pause();
                                           Pauses pauses = pausesOf(turn, [this] { pause(); });
                                           for (std::size_t i = first; i < end && !turn.stopping(); ++i)
                                               work(i, turn.thread, pauses);
                                       });
    }

    void projectCurves(std::uint32_t points)
    {
        resizeInSlices(table.curvePoints, points, pause);
        const std::size_t blocks = (points + CoordinateBlock::size - 1) / CoordinateBlock::size;
        forPieces(blocks, std::max<std::size_t>(sharing.pieceSize / CoordinateBlock::size, 1),
                  [&](std::size_t number, unsigned, Pauses&) {
                      const std::size_t first = number * CoordinateBlock::size;
                      CoordinateBlock block{};
                      projectPoints(
                          camera, first, std::min<std::size_t>(first + CoordinateBlock::size, points),
                          [this](std::uint32_t i) -> const Point<3>& { return model.curvePoint(i); },
                          table.curvePoints.data(), block);
                  });
    }

    void addCurve(std::uint32_t index, unsigned thread, Pauses& pauses)
    {
        const Curve& curve = model.curve(index);
        const std::uint32_t first = curve.firstPoint, end = endOf(curve);
        std::fill(table.curves.begin() + first, table.curves.begin() + end, index);

        // Too short to take a pixel, it gets the one next to the middle of its first piece.
        LineSegment segment = segmentOf({first, {noFacet, noFacet}, LineRule::curve, false});
        LineSegment firstPiece = segment;
        std::uint32_t at = first;
        for (; at < end; ++at) {
            pauses.step();
            makePiece(curve, at, segment);
            if (takesPixel(segment)) break;
            if (firstPiece.kind == LineSegment::Kind::nothing) firstPiece = segment;
        }
        if (at == end) {
            if (firstPiece.kind == LineSegment::Kind::nothing) return;
            firstPiece.kind = LineSegment::Kind::middle;
            return list(firstPiece, thread);
        }
        for (at = style.trace ? first : at; at < end; ++at) {
            pauses.step(2);
            makePiece(curve, at, segment);
            if (style.trace ? segment.kind != LineSegment::Kind::nothing : takesPixel(segment))
                addPiece(segment, thread);
        }
    }

    void addPiece(const LineSegment& segment, unsigned thread)
    {
        if (listsPixels && segment.kind == LineSegment::Kind::straight) {
            const TinyLine tiny(segment.from, segment.to);
            const Line line{segment.place, {noFacet, noFacet}, LineRule::curve, false};
            if (tiny.crossesOne()) return list(tiny.pixel(), line, tiny.isMostlyAcross(), thread);
        }
        list(segment, thread);
    }

    /// The piece from a point of a curve to the next one, or the point that is all of it.
    void makePiece(const Curve& curve, std::uint32_t at, LineSegment& segment) const
    {
        segment.kind = LineSegment::Kind::nothing;
        segment.place = at;
        const Point<3>* const projected = &table.curvePoints[at];
        if (at + 1 < endOf(curve)) {
            setEnds(segment, model.curvePoint(at), model.curvePoint(at + 1), projected[0], projected[1]);
        } else if (curve.pointCount == 1 && isFinite(*projected) && eye.inFront(model.curvePoint(at))) {
            segment.from = segment.to = *projected;
            segment.kind = LineSegment::Kind::dot;
        }
    }

    /// An edge that is drawn.
    struct Drawn {
        std::uint32_t index;
        LineRule rule;
        bool hasMoreFacets;
    };

    static constexpr std::size_t edgesAtOnce = 4 * Outlines::groupSize, groupsAhead = 12;

    /// Those of some groups of outlines. What is read from anywhere is asked for ahead.
    void addEdges(std::size_t firstGroup, std::size_t endGroup, const Point<3>* projected, unsigned thread)
    {
        Drawn drawn[edgesAtOnce];
        std::size_t count = 0;
        for (std::size_t group = firstGroup; group < endGroup; ++group) {
            style.outlines->fetch(static_cast<std::uint32_t>(group + groupsAhead));
            if (count + Outlines::groupSize > edgesAtOnce) {
                addEdges(drawn, count, projected, thread);
                count = 0;
            }
            count = choose(static_cast<std::uint32_t>(group), drawn, count);
        }
        addEdges(drawn, count, projected, thread);
    }

    /// Puts those of a group behind the `count` first ones; returns the new count.
    std::size_t choose(std::uint32_t group, Drawn* drawn, std::size_t count) const
    {
        const auto [all, freeStanding, many] =
            style.outlines->choose(group, {model, camera, shades, style.everyEdge, style.curves});
        for (std::uint64_t left = all; left != 0; left &= left - 1) {
            const auto i = static_cast<std::uint32_t>(std::countr_zero(left));
            const bool isOutline = (freeStanding >> i & 1) != 0;
            drawn[count++] = {group * Outlines::groupSize + i,
                              isOutline ? LineRule::outline : LineRule::crease, (many >> i & 1) != 0};
        }
        return count;
    }

    void addEdges(const Drawn* drawn, std::size_t count, const Point<3>* projected, unsigned thread)
    {
        constexpr std::size_t ahead = 32;
        const auto fetchEnds = [&](std::size_t i) {
            if (i >= count) return;
            const Edge& ends = style.outlines->ends(drawn[i].index);
            prefetch(&projected[ends.from]);
            prefetch(&projected[ends.to]);
        };
        for (std::size_t i = 0; i < ahead; ++i) fetchEnds(i);
        for (std::size_t i = 0; i < count; ++i) {
            fetchEnds(i + ahead);
            const Edge& ends = style.outlines->ends(drawn[i].index);
            const Point<3>&from = projected[ends.from], &to = projected[ends.to];
            const TinyLine tiny(from, to);
            const bool fromInFront = eye.surelyInFront(from[2]), toInFront = eye.surelyInFront(to[2]),
                       isTiny = tiny.crossesOneAtMost();
            if (listsPixels & fromInFront & toInFront & isTiny)
                list(tiny.pixel(), lineOf(drawn[i]), tiny.isMostlyAcross(), thread);
            else addEdge(drawn[i], projected, thread);
        }
    }

    Line lineOf(const Drawn& drawn) const noexcept
    {
        const Outlines::Pair& uses = style.outlines->firstUses(drawn.index);
        return {table.curvePlaces + drawn.index,
                {uses[0].facet(), uses[1].facet()},
                drawn.rule,
                drawn.hasMoreFacets};
    }

    void addEdge(const Drawn& drawn, const Point<3>* projected, unsigned thread)
    {
        const Edge& edge = style.outlines->ends(drawn.index);
        LineSegment segment = segmentOf(lineOf(drawn));
        setEnds(segment, model.vertex(edge.from).position, model.vertex(edge.to).position,
                projected[edge.from], projected[edge.to]);
        if (segment.kind == LineSegment::Kind::nothing) return;
        if (!takesPixel(segment)) segment.kind = LineSegment::Kind::middle;
        list(segment, thread);
    }

    void list(const TinyLine::Pixel& pixel, const Line& line, bool repeatedDown, unsigned thread)
    {
        const Bands& bands = table.bandsOfPicture;
        const int down = reach * repeatedDown, aside = reach - down;
        const bool inside = (pixel.column + aside >= 0) & (pixel.column - aside < bands.width)
                            & (pixel.row + down >= 0) & (pixel.row - down < bands.height);
        if (!inside) return;
        const int first = std::max(pixel.row - down, 0), last = std::min(pixel.row + down, bands.height - 1);
        table.parts[thread]->pixels.add(listOf(first, last)) = {
            pixel.point,
            line.place,
            {line.ownFacets[0], line.ownFacets[1]},
            {static_cast<std::int8_t>(pixel.toOther[0]), static_cast<std::int8_t>(pixel.toOther[1])},
            line.rule,
            line.hasMoreFacets,
            repeatedDown};
    }

    /// That of the bands of these rows of the picture.
    std::size_t listOf(int firstRow, int lastRow) const noexcept
    {
        const Bands& bands = table.bandsOfPicture;
        const unsigned first = static_cast<unsigned>(firstRow) >> bands.rowBits,
                       last = static_cast<unsigned>(lastRow) >> bands.rowBits;
        const auto level = static_cast<std::size_t>(std::bit_width(first ^ last));
        return table.levelStarts[level] + (first >> level);
    }

    void setEnds(LineSegment& segment, const Point<3>& from, const Point<3>& to,
                 const Point<3>& projectedFrom, const Point<3>& projectedTo) const
    {
        segment.from = projectedFrom;
        segment.to = projectedTo;
        if (!eye.surelyInFront(projectedFrom[2]) || !eye.surelyInFront(projectedTo[2])) {
            Point<3> start = from, end = to;
            if (!eye.cut(start, end)) return;
            segment.from = camera.project(start);
            segment.to = camera.project(end);
        }
        if (isFinite(segment.from) && isFinite(segment.to)) segment.kind = LineSegment::Kind::straight;
    }

    /// Puts a segment into the list of the bands that it may have pixels in.
    void list(const LineSegment& segment, unsigned thread)
    {
        if (style.trace) table.kept[segment.place] = segment;
        const Bands& bands = table.bandsOfPicture;
        const double left = std::min(segment.from[0], segment.to[0]),
                     right = std::max(segment.from[0], segment.to[0]);
        const double top = std::min(segment.from[1], segment.to[1]),
                     bottom = std::max(segment.from[1], segment.to[1]);
        const double margin = reach + 2.0;
        if ((right < -margin) | (left > bands.width + margin)) return;
        int first = 0, last = bands.height - 1;
        if ((top > -fewDigits) & (bottom < fewDigits)) {   // else rows beside them may be meant
            first = std::max(first, floorOf(top) - reach);
            last = std::min(last, floorOf(bottom) + 1 + reach);
        }
        if (first > last) return;
        table.parts[thread]->segments.add(listOf(first, last)) = segment;
    }

    LineTable& table;
    const Model& model;
    const Camera& camera;
    const LineStyle& style;
    const FacetShade* const shades;
    const Sharing& sharing;
    const std::function<void()>& pause;
    const EyeCut eye;
    const int reach;          // pixels to each side of a line's middle
    const bool listsPixels;   // a trace wants the segments
};

void LineTable::restart(const Bands& bands, unsigned threads)
{
    bandsOfPicture = bands;
    levelStarts.clear();
    std::size_t lists = 0;
    for (std::size_t level = 0;; ++level) {
        const std::size_t ofLevel = ((bands.count() - 1) >> level) + 1;
        levelStarts.push_back(lists);
        lists += ofLevel;
        if (ofLevel == 1) break;
    }
    while (parts.size() < threads) parts.push_back(std::make_unique<Part>());
    for (const auto& part : parts) {
        part->segments.restart(lists);
        part->pixels.restart(lists);
    }
}

void LineTable::collect(const Model& model, const Camera& camera, const Point<3>* projected,
                        const LineStyle& style, const FacetShade* shades, const Bands& bands,
                        const Sharing& sharing, const std::function<void()>& pause)
{
    scene = &model;
    facetShades = shades;
    outlines = style.outlines;
    commonColour = style.colour;
    restart(bands, std::min(sharing.threads, Workers::maxThreads));
    Collector(*this, model, camera, style, shades, sharing, pause).run(projected);
}

std::uint16_t LineTable::material(std::uint32_t place) const noexcept
{
    if (place < curvePlaces) return scene->curve(curves[place]).material->index;
    return scene->facet(outlines->colouringFacet(outline(place), facetShades)).material->index;
}

std::array<std::uint8_t, 3> LineTable::colour(std::uint32_t place) const noexcept
{
    if (commonColour) return *commonColour;
    if (place < curvePlaces) {
        const Colour& colour = scene->curve(curves[place]).material->colour;
        return {toByte(colour[0]), toByte(colour[1]), toByte(colour[2])};
    }
    const FacetShade& shade = facetShades[outlines->colouringFacet(outline(place), facetShades)];
    std::array<std::uint8_t, 3> bytes;
    for (std::size_t i = 0; i < 3; ++i) bytes[i] = static_cast<std::uint8_t>(shade.colour[i] * 35 / 100);
    return bytes;
}

}   // namespace belvor
