#include "readers/dxf/DXFHatchLoops.h"

#include "calcore/Angle.h"
#include "calcore/Trigonometry.h"
#include "readers/dxf/DXFArcs.h"
#include "readers/dxf/DXFSpline.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace belvor {
namespace {

constexpr double closeEnough = 1e-6;   // of the size of the path: two ends that are meant to be one point

/// Appends p and the chords' ends of a bulge from there to q, without q.
void appendBulge(DXFLoop2& chain, const Point<2>& p, const Point<2>& q, double bulge)
{
    chain.push_back(p);
    if (isBent(bulge) && p != q) {
        const BulgeArc arc = bulgeArc(p, q, bulge);
        if (std::isfinite(arc.radius))
            for (int k = 1; k < arc.chords; ++k) chain.push_back(arc.centre + arc.spoke(k) * arc.radius);
    }
}

DXFLoop2 polylineLoop(const std::vector<DXFHatchPath::Vertex>& vertices)
{
    DXFLoop2 loop;
    for (std::size_t i = 0; i < vertices.size(); ++i) {
        const DXFHatchPath::Vertex &from = vertices[i], &to = vertices[(i + 1) % vertices.size()];
        appendBulge(loop, from.at, to.at, from.bulge);
    }
    return loop;
}

DXFLoop2 arcChain(const DXFHatchEdge& edge)
{
    const double sweep = sweepBetween(edge.start, edge.end), turn = edge.clockwise ? -1.0 : 1.0;
    const int chords = arcSegments(sweep, edge.size);
    DXFLoop2 chain;
    for (int k = 0; k <= chords; ++k) {
        const Angle at = Angle::degrees(turn * (edge.start + sweep * k / chords));
        chain.push_back(edge.first + Vector<2>(at.cos(), at.sin()) * edge.size);
    }
    return chain;
}

/// Where on an ellipse the ray at an angle from its major axis meets it, as the degrees of the circle that
/// it is drawn out from.
double ellipseParameter(double degrees, double ratio) noexcept
{
    if (!(ratio > 0.0)) return degrees;
    const double turns = std::floor((degrees + 180.0) / 360.0);
    const Angle angle = Angle::degrees(degrees - turns * 360.0);
    return toDegrees(arctangent(angle.sin(), angle.cos() * ratio)) + turns * 360.0;
}

DXFLoop2 ellipseChain(const DXFHatchEdge& edge)
{
    const double start = ellipseParameter(edge.start, edge.size), end = ellipseParameter(edge.end, edge.size);
    const bool full = std::fabs(edge.end - edge.start) >= 360.0;
    const double sweep = full ? 360.0 : sweepBetween(start, end), turn = edge.clockwise ? -1.0 : 1.0;
    const Vector<2> major = edge.second.vector(), minor = Vector<2>(-major[1], major[0]) * edge.size;
    const int chords = arcSegments(sweep, major.length());
    DXFLoop2 chain;
    for (int k = 0; k <= chords; ++k) {
        const Angle at = Angle::degrees(turn * (start + sweep * k / chords));
        chain.push_back(edge.first + major * at.cos() + minor * at.sin());
    }
    return chain;
}

DXFLoop2 chainOf(const DXFHatchEdge& edge)
{
    switch (edge.kind) {
    case DXFHatchEdge::Kind::line: return {edge.first, edge.second};
    case DXFHatchEdge::Kind::arc: return arcChain(edge);
    case DXFHatchEdge::Kind::ellipse: return ellipseChain(edge);
    case DXFHatchEdge::Kind::spline: break;
    }
    return splineChords(edge);
}

double distance(const Point<2>& a, const Point<2>& b) noexcept { return (b - a).length(); }

double sizeOf(const std::vector<DXFLoop2>& chains) noexcept
{
    Point<2> low = chains.front().front(), high = low;
    for (const DXFLoop2& chain : chains)
        for (const Point<2>& corner : chain)
            for (int axis = 0; axis < 2; ++axis) {
                low[axis] = std::min(low[axis], corner[axis]);
                high[axis] = std::max(high[axis], corner[axis]);
            }
    return distance(low, high);
}

/// Joins chains to closed loops, in their order.
class Joiner {
public:
    explicit Joiner(double reach) : tolerance(reach) {}

    /// `next` is the chain after this one, or null: it decides which way round the first of a loop goes.
    void add(DXFLoop2 chain, const DXFLoop2* next)
    {
        if (open.empty()) {
            if (next && !isClosed(chain) && nearest(chain.front(), *next) < nearest(chain.back(), *next))
                std::reverse(chain.begin(), chain.end());
        } else if (distance(open.back(), chain.back()) < distance(open.back(), chain.front())) {
            std::reverse(chain.begin(), chain.end());
        }
        open.insert(open.end(), chain.begin(), chain.end());
        if (isClosed(open)) finish();
    }

    std::vector<DXFLoop2> take()
    {
        if (!open.empty()) finish();
        return std::move(loops);
    }

private:
    static double nearest(const Point<2>& end, const DXFLoop2& chain) noexcept
    {
        return std::min(distance(end, chain.front()), distance(end, chain.back()));
    }
    bool isClosed(const DXFLoop2& chain) const noexcept
    {
        return chain.size() > 2 && distance(chain.front(), chain.back()) <= tolerance;
    }
    void finish() { loops.push_back(std::exchange(open, {})); }

    double tolerance;
    DXFLoop2 open;
    std::vector<DXFLoop2> loops;
};

void dropRepeats(DXFLoop2& loop, double tolerance)
{
    const auto same = [tolerance](const Point<2>& a, const Point<2>& b) {
        return distance(a, b) <= tolerance;
    };
    loop.erase(std::unique(loop.begin(), loop.end(), same), loop.end());
    while (loop.size() > 1 && same(loop.front(), loop.back())) loop.pop_back();
}

}   // namespace

std::vector<DXFLoop2> loopsOf(const DXFHatchPath& path)
{
    std::vector<DXFLoop2> loops;
    if (path.isPolyline) {
        loops.push_back(polylineLoop(path.vertices));
        for (DXFLoop2& loop : loops) dropRepeats(loop, 0.0);
    } else {
        std::vector<DXFLoop2> chains;
        for (const DXFHatchEdge& edge : path.edges)
            if (DXFLoop2 chain = chainOf(edge); !chain.empty()) chains.push_back(std::move(chain));
        if (chains.empty()) return {};
        const double tolerance = closeEnough * sizeOf(chains);
        Joiner joiner(tolerance);
        for (std::size_t i = 0; i < chains.size(); ++i)
            joiner.add(chains[i], i + 1 < chains.size() ? &chains[i + 1] : nullptr);
        loops = joiner.take();
        for (DXFLoop2& loop : loops) dropRepeats(loop, tolerance);
    }
    std::erase_if(loops, [](const DXFLoop2& loop) { return loop.size() < 3; });
    return loops;
}

}   // namespace belvor
