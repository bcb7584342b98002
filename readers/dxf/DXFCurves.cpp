#include "readers/dxf/DXFCurves.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace belvor {
namespace {

bool isFinite(const Point<3>& p) noexcept
{
    return std::isfinite(p[0]) && std::isfinite(p[1]) && std::isfinite(p[2]);
}

}   // namespace

bool DXFCurves::add(const DXFCurveSurface& surface, DXFCurveKind kind, std::span<const Point<3>> points,
                    std::int32_t line)
{
    if (!std::all_of(points.begin(), points.end(), isFinite)) return false;
    const bool isEndless = kind != DXFCurveKind::chords;
    if (isEndless) endlessCurves.append(builder.model().curveCount(), line, kind == DXFCurveKind::ray);
    surfaceOf.append(indexOf(surface));
    builder.addCurve(points, !isEndless);
    return true;
}

/// Most have the surface of the one before.
std::uint32_t DXFCurves::indexOf(const DXFCurveSurface& surface)
{
    if (recent == surfaces.end() || recent->first != surface)
        recent = surfaces.try_emplace(surface, static_cast<std::uint32_t>(surfaces.size())).first;
    return recent->second;
}

/// The part within the sphere; none of a line that misses it.
std::optional<std::pair<Point<3>, Point<3>>> DXFCurves::cut(const Point<3>& first, const Point<3>& second,
                                                            bool isRay, const Sphere& sphere) noexcept
{
    const Vector<3> along = (second - first).unit();
    const double middle = dot(sphere.centre - first, along);   // along the line
    const Vector<3> aside = first + along * middle - sphere.centre;
    const double square = sphere.radius * sphere.radius - dot(aside, aside);
    if (!(square > 0.0)) return {};
    const double half = std::sqrt(square);
    const double start = isRay ? std::max(middle - half, 0.0) : middle - half, end = middle + half;
    const Point<3> from = first + along * start, to = first + along * end;
    if (!(start < end) || !isFinite(from) || !isFinite(to)) return {};
    return std::pair(from, to);
}

/// False when nothing of it is within the sphere.
bool DXFCurves::cutInModel(const Curve& curve, const EndlessCurve& endless, const Sphere& sphere)
{
    const std::uint32_t first = curve.firstPoint;
    const Model& model = builder.model();
    const auto part = cut(model.curvePoint(first), model.curvePoint(first + 1), endless.isRay, sphere);
    if (!part) return false;
    builder.setCurvePoint(first, part->first);
    builder.setCurvePoint(first + 1, part->second);
    return true;
}

DXFCurves::Endless DXFCurves::finish(const FindMaterial& find, const std::function<void()>& pause)
{
    constexpr std::uint32_t curvesBetweenPauses = 16384;
    std::vector<const DXFCurveSurface*> surfaceAt(surfaces.size());
    for (const auto& [surface, index] : surfaces) surfaceAt[index] = &surface;
    std::vector<const Material*> materials(surfaces.size());
    Sphere sphere;
    if (endlessCurves.size() != 0) builder.model().bounds(sphere.centre, sphere.radius);
    Endless result;
    std::uint32_t nextEndless = 0;
    builder.finishCurves([&](std::uint32_t index, const Curve& curve) -> const Material* {
        if (index % curvesBetweenPauses == curvesBetweenPauses - 1) pause();
        if (!curve.bounded) {
            const EndlessCurve& endless = endlessCurves[nextEndless++];
            if (!cutInModel(curve, endless, sphere)) {
                ++(endless.isRay ? result.missedRays : result.missedLines);
                return nullptr;
            }
            result.drawn.insert(endless.line);
        }
        const std::uint32_t surface = surfaceOf[index];
        if (!materials[surface]) materials[surface] = &find(*surfaceAt[surface]);
        return materials[surface];
    });
    return result;
}

}   // namespace belvor
