#include "render/LineVisibility.h"

#include "render/LineTable.h"

#include <cmath>

namespace belvor {
namespace {

double finiteOrZero(double slope) noexcept { return std::isfinite(slope) ? slope : 0.0; }

}   // namespace

LineVisibility::LineVisibility(const Model& scene, const Camera& view, const LineTable& lines,
                               const Outlines* edges) noexcept
    : model(scene),
      camera(view),
      table(lines),
      outlines(edges),
      perspective(view.describe().kind == 0),
      parallelTolerance(0x1p-20 * view.scale * (view.far - view.near))
{}

void LineVisibility::setRows(int upperIndex, const SurfaceRow& upper, const SurfaceRow& lower) noexcept
{
    upperRow = upperIndex;
    rows[0] = upper;
    rows[1] = lower;
}

bool LineVisibility::shows(const LineSegment& segment, const Point<3>& point, Sample drawn,
                           Sample other) const noexcept
{
    if (!hides(segment, point, drawn)) return true;
    if (segment.rule == LineRule::curve || other == drawn || !holds(other)) return false;
    if (segment.rule == LineRule::outline) return !hides(segment, point, other);
    const std::uint32_t owner = rowOf(other).owners[static_cast<std::size_t>(other.column)];
    return owner != noFacet && isOwn(segment, owner);
}

/// A facet that the line does not belong to hides the point when its plane, carried from the
/// sample point to the line's own point, is nearer.
bool LineVisibility::hides(const LineSegment& segment, const Point<3>& point, Sample at) const noexcept
{
    const SurfaceRow& row = rowOf(at);
    const std::uint32_t owner = row.owners[static_cast<std::size_t>(at.column)];
    if (owner == noFacet || isOwn(segment, owner)) return false;
    if (owner != slopesOf) {
        const Vector<3> normal = camera.screenPlane(model.facet(owner).plane).normal();
        slopesOf = owner;
        slopeX = finiteOrZero(-normal[0] / normal[2]);
        slopeY = finiteOrZero(-normal[1] / normal[2]);
    }
    const double surface = row.depths[static_cast<std::size_t>(at.column)] + slopeX * (point[0] - at.column)
                           + slopeY * (point[1] - at.row);
    const double tolerance = perspective ? 0x1p-20 * std::abs(point[2]) : parallelTolerance;
    return point[2] > surface + tolerance;
}

bool LineVisibility::holds(Sample at) const noexcept
{
    return at.row >= upperRow && at.row <= upperRow + 1 && at.column >= 0
           && static_cast<std::size_t>(at.column) < rowOf(at).owners.size();
}

bool LineVisibility::isOwn(const LineSegment& segment, std::uint32_t facet) const noexcept
{
    return facet == segment.ownFacets[0] || facet == segment.ownFacets[1]
           || (segment.hasMoreFacets && outlines->belongsTo(table.chain(segment.chain).outline, facet));
}

}   // namespace belvor
