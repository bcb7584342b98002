#include "render/Buffer.h"

#include "render/Spans.h"
#include "scene/Camera.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace belvor {

Buffer::Buffer(int width)
    : rowWidth(width), depths(static_cast<std::size_t>(width)), owners(static_cast<std::size_t>(width))
{
}

void Buffer::clear()
{
    std::fill(depths.begin(), depths.end(), std::numeric_limits<double>::max());
    std::fill(owners.begin(), owners.end(), noFacet);
}

void Buffer::scanFacets(std::span<const ActiveFacet> active, const Camera& camera)
{
    for (const ActiveFacet& facet : active) {
        if (facet.crossingCount % 2 != 0) {
            scanOddFacet(facet, camera);
            continue;
        }
        for (std::uint32_t i = 0; i < facet.crossingCount; i += 2)
            fillSpan(facet.facet, facet.crossings[i], facet.crossings[i + 1]);
    }
}

/// One boundary of the facet lies at infinity, on the side where the surface recedes.
void Buffer::scanOddFacet(const ActiveFacet& active, const Camera& camera) noexcept
{
    const Vector<3> screen = camera.screenPlane(facets->facet(active.facet).plane).normal();
    double slope = -screen[0] / screen[2];   // of the depth, per pixel
    if (!std::isfinite(slope)) slope = 0.0;
    const Crossing* at = active.crossings;
    const Crossing* const end = at + active.crossingCount;
    if (slope > 0.0) {
        const Columns columns = columnsUpTo(at->x, rowWidth);
        fill(active.facet, columns.first, columns.end, at->depth - slope * at->x, slope);
        ++at;
    }
    for (; end - at >= 2; at += 2) fillSpan(active.facet, at[0], at[1]);
    if (slope < 0.0) {
        const Columns columns = columnsFrom(at->x, rowWidth);
        fill(active.facet, columns.first, columns.end, at->depth - (at->x - columns.first) * slope, slope);
    }
}

void Buffer::fillSpan(std::uint32_t facet, const Crossing& left, const Crossing& right) noexcept
{
    const Columns columns = coveredColumns(left.x, right.x, rowWidth);
    if (columns.first >= columns.end) return;
    double step = right.depth - left.depth;
    if (const double length = right.x - left.x; length != 0.0) step /= length;
    fill(facet, columns.first, columns.end, left.depth + (columns.first - left.x) * step, step);
}

void Buffer::fill(std::uint32_t facet, int first, int end, double depth, double step) noexcept
{
    double* const nearest = depths.data();
    std::uint32_t* const owner = owners.data();
    for (int i = first; i < end; ++i) {
        const double old = nearest[i];
        const std::uint32_t oldOwner = owner[i];
        const bool taken = (depth < old) | ((depth == old) & (facet >= oldOwner));
        nearest[i] = taken ? depth : old;
        owner[i] = taken ? facet : oldOwner;
        depth += step;
    }
}

}   // namespace belvor
