#include "render/Buffer.h"

#include "scene/Camera.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace belvor {

Buffer::Buffer(int width)
    : rowWidth(width),
      surfaces{std::vector<double>(static_cast<std::size_t>(width)),
               std::vector<std::uint32_t>(static_cast<std::size_t>(width))}
{}

void Buffer::clear()
{
    std::fill(surfaces.depths.begin(), surfaces.depths.end(), std::numeric_limits<double>::max());
    std::fill(surfaces.owners.begin(), surfaces.owners.end(), noFacet);
}

void Buffer::scanFacets(std::span<const ActiveFacet> active, const Camera& camera)
{
    for (const ActiveFacet& facet : active) {
        if (facet.crossingCount % 2 != 0) {
            scanOpenFacet(facet, camera);
            continue;
        }
        for (std::uint32_t i = 0; i < facet.crossingCount; i += 2)
            fill(spanBetween(facet.facet, facet.crossings[i], facet.crossings[i + 1], rowWidth));
    }
}

/// One boundary of the facet lies at infinity, on the side where the surface recedes.
void Buffer::scanOpenFacet(const ActiveFacet& active, const Camera& camera) noexcept
{
    const Vector<3> screen = camera.screenPlane(facets->facet(active.facet).plane).normal();
    double slope = -screen[0] / screen[2];   // of the depth, per pixel
    if (!std::isfinite(slope)) slope = 0.0;
    const Crossing* at = active.crossings;
    const Crossing* const end = at + active.crossingCount;
    if (slope > 0.0) {
        const Columns columns = columnsUpTo(at->x, rowWidth);
        fill({at->depth - slope * at->x, slope, active.facet, columns.first, columns.end});
        ++at;
    }
    for (; end - at >= 2; at += 2) fill(spanBetween(active.facet, at[0], at[1], rowWidth));
    if (slope < 0.0) {
        const Columns columns = columnsFrom(at->x, rowWidth);
        fill({at->depth - (at->x - columns.first) * slope, slope, active.facet, columns.first, columns.end});
    }
}

void Buffer::addLines(const LineRow& lineRow, bool keepSurfaces)
{
    if (!keepSurfaces) Buffer::clear();
    if (lineRow.empty()) return;
    for (std::size_t i = 0; i < surfaces.owners.size(); ++i) {
        if (lineRow.chain(i) == LineRow::noChain) continue;
        surfaces.owners[i] = firstLine + lineRow.chain(i);
        surfaces.depths[i] = lineRow.depth(i);
    }
}

void Buffer::fill(const SpanFill& span) noexcept
{
    double* const nearest = surfaces.depths.data();
    std::uint32_t* const owner = surfaces.owners.data();
    double depth = span.depth;
    for (int i = span.first; i < span.end; ++i) {
        const double old = nearest[i];
        const std::uint32_t oldOwner = owner[i];
        const bool taken = (depth < old) | ((depth == old) & (span.facet >= oldOwner));
        nearest[i] = taken ? depth : old;
        owner[i] = taken ? span.facet : oldOwner;
        depth += span.step;
    }
}

}   // namespace belvor
