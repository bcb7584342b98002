// Compiled for AVX-512, whose compares and choices take fewer steps: called where the processor has it.
#include "render/FacetFillBody.h"

namespace belvor {

void fillFacetsByWidestVectors(const SimpleFacet* facets, std::size_t count, const double* points,
                               const FillRows& target) noexcept
{
    fillAll(facets, count, points, target);
}

}   // namespace belvor
