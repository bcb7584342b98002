#include "render/FacetFill.h"

#include "render/FacetFillBody.h"

namespace belvor {

void fillFacets(const SimpleFacet* facets, std::size_t count, const double* points,
                const FillRows& target) noexcept
{
    fillAll(facets, count, points, target);
}

#if defined(__x86_64__) || defined(__i386__)
FacetFill fastestFacetFill() noexcept
{
    static const bool wide = __builtin_cpu_supports("avx2") != 0;
    return wide ? fillFacetsByWideVectors : fillFacets;
}
#else
FacetFill fastestFacetFill() noexcept { return fillFacets; }
#endif

}   // namespace belvor
