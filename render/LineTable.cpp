#include "render/LineTable.h"

#include "render/Outlines.h"
#include "scene/Camera.h"

#include <algorithm>
#include <cmath>

namespace belvor {
namespace {

bool isFinite(const Point<3>& p) noexcept
{
    return std::isfinite(p[0]) && std::isfinite(p[1]) && std::isfinite(p[2]);
}

/// Whether an integer lies between the two, themselves included.
bool holdsInteger(double a, double b) noexcept { return std::ceil(std::min(a, b)) <= std::max(a, b); }

/// Whether a straight segment takes any pixel by the rules of columns and rows.
bool takesPixel(const LineSegment& segment) noexcept
{
    const double x0 = segment.from[0], y0 = segment.from[1], x1 = segment.to[0], y1 = segment.to[1];
    return (x0 != x1 && holdsInteger(x0, x1)) || (y0 != y1 && holdsInteger(y0, y1));
}

/// The part of a straight line that a camera can project: in perspective at least a little in
/// front of the eye.
class EyeCut {
public:
    explicit EyeCut(const Camera& view)
        : camera(view),
          perspective(view.describe().kind == 0),
          limit(view.radius * 0x1p-20)
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

    /// Whether the screen depth alone tells that inFront() is true.
    bool surelyInFront(double depth) const noexcept
    {
        return !perspective || (depth < 0.0 && depth > -camera.scale / (2.0 * limit));
    }

private:
    double ahead(const Point<3>& p) const noexcept
    {
        return dot(camera.frame.forward, p - camera.eye) - limit;
    }

    const Camera& camera;
    const bool perspective;
    const double limit;
};

}   // namespace

class LineTable::Collector {
public:
    Collector(LineTable& filled, const Model& scene, const Camera& view, const LineStyle& lines,
              LargeVector<FacetShade>& paints)
        : table(filled),
          model(scene),
          camera(view),
          style(lines),
          shades(paints),
          eye(view)
    {}

    void addCurves()
    {
        for (std::uint32_t i = 0; i < model.curveCount(); ++i) {
            const Curve& curve = model.curve(i);
            const Colour& colour = curve.material->colour;
            pattern.rule = LineRule::curve;
            begin({noOutline, curve.material->index},
                  {{toByte(colour[0]), toByte(colour[1]), toByte(colour[2])}, false});
            if (curve.pointCount == 1) addDot(model.curvePoint(curve.firstPoint));
            for (std::uint32_t k = 1; k < curve.pointCount; ++k)
                addPiece(model.curvePoint(curve.firstPoint + k - 1), model.curvePoint(curve.firstPoint + k));
            end();
        }
    }

    void addOutlines(const Point<3>* projected)
    {
        const Outlines& outlines = *style.outlines;
        for (std::uint32_t i = 0; i < outlines.size(); ++i) {
            const Outlines::Outline& edge = outlines[i];
            const bool freeStanding =
                edge.kind == Outlines::Kind::border || outlines.isContour(i, model, camera, shades.data());
            if (!freeStanding && !style.everyEdge && edge.kind == Outlines::Kind::smooth) continue;
            const std::uint32_t facet = outlines.colouringFacet(i, shades.data());
            FacetShade shade = shades[facet];
            for (std::uint8_t& channel : shade.colour)
                channel = static_cast<std::uint8_t>(channel * 35 / 100);
            const std::span<const Outlines::Use> uses = outlines.uses(i);
            pattern.rule = freeStanding ? LineRule::outline : LineRule::crease;
            pattern.ownFacets[0] = uses[0].facet();
            pattern.ownFacets[1] = uses.size() > 1 ? uses[1].facet() : noFacet;
            pattern.hasMoreFacets = uses.size() > 2;
            begin({i, model.facet(facet).material->index}, shade);
            const Point<3>&from = projected[edge.from], &to = projected[edge.to];
            if (eye.surelyInFront(from[2]) && eye.surelyInFront(to[2])) addProjected(from, to);
            else addPiece(model.vertex(edge.from).position, model.vertex(edge.to).position);
            end();
        }
    }

private:
    void begin(const LineChain& chain, FacetShade shade)
    {
        if (style.colour) std::copy_n(style.colour->begin(), 3, shade.colour);
        table.chains.push_back(chain);
        shades.push_back(shade);
        pattern.chain = static_cast<std::uint32_t>(table.chains.size() - 1);
        firstSegment = table.segments.size();
        hasPixel = false;
    }

    void addDot(const Point<3>& point)
    {
        if (!eye.inFront(point)) return;
        const Point<3> projected = camera.project(point);
        if (isFinite(projected)) add(projected, projected, LineSegment::Kind::dot);
    }

    void addPiece(Point<3> from, Point<3> to)
    {
        if (eye.cut(from, to)) addProjected(camera.project(from), camera.project(to));
    }

    void addProjected(const Point<3>& from, const Point<3>& to)
    {
        if (isFinite(from) && isFinite(to)) add(from, to, LineSegment::Kind::straight);
    }

    void add(const Point<3>& from, const Point<3>& to, LineSegment::Kind kind)
    {
        pattern.from = from;
        pattern.to = to;
        pattern.kind = kind;
        pattern.index = static_cast<std::uint32_t>(table.segments.size());
        table.segments.push_back(pattern);
        hasPixel = hasPixel || kind == LineSegment::Kind::dot || takesPixel(table.segments.back());
    }

    /// A chain too short to take a pixel gets the one next to the middle of its first segment.
    void end()
    {
        if (hasPixel || table.segments.size() == firstSegment) return;
        table.segments.resize(firstSegment + 1);
        table.segments.back().kind = LineSegment::Kind::middle;
    }

    LineTable& table;
    const Model& model;
    const Camera& camera;
    const LineStyle& style;
    LargeVector<FacetShade>& shades;
    const EyeCut eye;
    LineSegment pattern{{},    {}, 0, {noFacet, noFacet}, LineSegment::Kind::straight, LineRule::curve,
                        false, 0};
    std::size_t firstSegment = 0;   // of the chain at hand
    bool hasPixel = false;
};

void LineTable::collect(const Model& model, const Camera& camera, const Point<3>* projected,
                        const LineStyle& style, LargeVector<FacetShade>& shades)
{
    chains.clear();
    segments.clear();
    Collector collector(*this, model, camera, style, shades);
    if (style.curves) collector.addCurves();
    if (style.outlines) collector.addOutlines(projected);
}

}   // namespace belvor
