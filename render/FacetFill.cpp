#include "render/FacetFill.h"

#include "platform/Processors.h"
#include "render/FacetFillBody.h"

namespace belvor {

void fillFacets(const SimpleFacet* facets, std::size_t count, const double* points,
                const FillRows& target) noexcept
{
    fillAll(facets, count, points, target);
}

FacetFills runnableFacetFills() noexcept
{
    FacetFills fills{{fillFacets}, 1};
#if defined(__x86_64__) || defined(__i386__)
    if (hasWideVectors()) fills.all[fills.count++] = fillFacetsByWideVectors;
    if (hasWidestVectors()) fills.all[fills.count++] = fillFacetsByWidestVectors;
#endif
    return fills;
}

FacetFill fastestFacetFill() noexcept
{
    static const FacetFills fills = runnableFacetFills();
    return fills.all[fills.count - 1];
}

}   // namespace belvor
