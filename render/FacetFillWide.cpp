// Compiled for AVX2: called where the processor has it.
#include "render/FacetFillBody.h"

namespace belvor {

void fillFacetsByWideVectors(const SimpleFacet* facets, std::size_t count, const double* points,
                             const FillRows& target) noexcept
{
    fillAll(facets, count, points, target);
}

}   // namespace belvor
