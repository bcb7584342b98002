#include "readers/dxf/DXFCurves.h"

#include <algorithm>
#include <cmath>

namespace belvor {
namespace {

bool isFinite(const Point<3>& p) noexcept
{
    return std::isfinite(p[0]) && std::isfinite(p[1]) && std::isfinite(p[2]);
}

}   // namespace

bool DXFCurves::add(const DXFCurveSurface& surface, DXFCurveKind kind, std::span<const Point<3>> itsPoints,
                    std::int32_t line)
{
    if (!std::all_of(itsPoints.begin(), itsPoints.end(), isFinite)) return false;
    points.insert(points.end(), itsPoints.begin(), itsPoints.end());
    items.push_back({surface, itsPoints.size(), line, kind});
    anyEndless |= kind != DXFCurveKind::chords;
    ++added;
    pointsAdded += itsPoints.size();
    return true;
}

/// The bounds of the model without its lines that have no end.
DXFCurves::Sphere DXFCurves::sphereOf(const Model& model, bool inBounds) const
{
    Sphere sphere;
    const std::uint32_t vertices = model.vertexCount();
    if (model.facetCount() != 0 && !inBounds) {
        model.bounds(sphere.centre, sphere.radius);
        return sphere;
    }
    ModelBuilder all;
    for (std::uint32_t i = 0; i < vertices; ++i) all.addVertex(model.vertex(i).position);
    auto next = points.begin();
    for (const Item& item : items) {
        const auto end = next + static_cast<std::ptrdiff_t>(item.pointCount);
        if (item.kind == DXFCurveKind::chords)
            for (auto point = next; point != end; ++point) all.addVertex(*point);
        next = end;
    }
    all.model().bounds(sphere.centre, sphere.radius);
    return sphere;
}

/// The part within the sphere; none of a line that misses it.
std::optional<std::pair<Point<3>, Point<3>>> DXFCurves::cut(const std::vector<Point<3>>& line, bool isRay,
                                                            const Sphere& sphere) noexcept
{
    const Vector<3> along = (line[1] - line[0]).unit();
    const double middle = dot(sphere.centre - line[0], along);   // along the line
    const Vector<3> aside = line[0] + along * middle - sphere.centre;
    const double square = sphere.radius * sphere.radius - dot(aside, aside);
    if (!(square > 0.0)) return {};
    const double half = std::sqrt(square);
    const double start = isRay ? std::max(middle - half, 0.0) : middle - half, end = middle + half;
    const Point<3> from = line[0] + along * start, to = line[0] + along * end;
    if (!(start < end) || !isFinite(from) || !isFinite(to)) return {};
    return std::pair(from, to);
}

DXFCurves::Endless DXFCurves::moveTo(ModelBuilder& builder, bool inBounds, const FindMaterial& find,
                                     const std::function<void()>& pause)
{
    constexpr std::size_t curvesBetweenPauses = 1024;
    const Sphere sphere = anyEndless ? sphereOf(builder.model(), inBounds) : Sphere{};
    std::vector<Point<3>> curve;
    Endless endless;
    for (std::size_t moved = 0; !items.empty(); ++moved) {
        if (moved % curvesBetweenPauses == curvesBetweenPauses - 1) pause();
        const Item item = items.front();
        items.pop_front();
        const auto end = points.begin() + static_cast<std::ptrdiff_t>(item.pointCount);
        curve.assign(points.begin(), end);
        points.erase(points.begin(), end);
        if (item.kind == DXFCurveKind::chords) {
            builder.addCurve(find(item.surface), curve);
        } else if (const auto part = cut(curve, item.kind == DXFCurveKind::ray, sphere)) {
            const Point<3> ends[] = {part->first, part->second};
            builder.addCurve(find(item.surface), ends, false);
            endless.drawn.insert(item.line);
        } else {
            ++(item.kind == DXFCurveKind::ray ? endless.missedRays : endless.missedLines);
        }
    }
    return endless;
}

}   // namespace belvor
