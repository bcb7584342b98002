#include "render/PixelRow.h"

#include "scene/Camera.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace belvor {

PixelRow::PixelRow(int pixels)
    : pixelCount(static_cast<std::size_t>(pixels)),
      depthStore(pixelCount + fillPadding),
      ownerStore(pixelCount + fillPadding)
{}

void PixelRow::clear() noexcept
{
    std::fill(depthStore.begin(), depthStore.end(), std::numeric_limits<double>::max());
    std::fill(ownerStore.begin(), ownerStore.end(), noFacet);
}

void PixelRow::scanFacets(std::span<const ActiveFacet> active, const Model& model,
                          const Camera& camera) noexcept
{
    for (const ActiveFacet& facet : active) {
        if (facet.crossingCount % 2 != 0) {
            scanOpenFacet(facet, model, camera);
            continue;
        }
        for (std::uint32_t i = 0; i < facet.crossingCount; i += 2)
            fill(spanBetween(facet.facet, facet.crossings[i], facet.crossings[i + 1], width()));
    }
}

void PixelRow::scanFacets(std::span<const ActiveFacet> active, const Model& model, const Camera& camera,
                          Pauses& pauses)
{
    for (const ActiveFacet& facet : active) {
        pauses.step(1 + facet.crossingCount / 2 + pixelCount / 32);
        scanFacets({&facet, 1}, model, camera);
    }
}

/// One boundary of the facet lies at infinity, on the side where the surface recedes.
void PixelRow::scanOpenFacet(const ActiveFacet& active, const Model& model, const Camera& camera) noexcept
{
    const Vector<3> screen = camera.screenPlane(model.facet(active.facet).plane).normal();
    double slope = -screen[0] / screen[2];   // of the depth, per pixel
    if (!std::isfinite(slope)) slope = 0.0;
    const Crossing* at = active.crossings;
    const Crossing* const end = at + active.crossingCount;
    if (slope > 0.0) {
        const Columns columns = columnsUpTo(at->x, width());
        fill({at->depth - slope * at->x, slope, active.facet, columns.first, columns.end});
        ++at;
    }
    for (; end - at >= 2; at += 2) fill(spanBetween(active.facet, at[0], at[1], width()));
    if (slope < 0.0) {
        const Columns columns = columnsFrom(at->x, width());
        fill({at->depth - (at->x - columns.first) * slope, slope, active.facet, columns.first, columns.end});
    }
}

void PixelRow::fill(const SpanFill& span) noexcept
{
    double* const nearest = depthStore.data();
    std::uint32_t* const owner = ownerStore.data();
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
