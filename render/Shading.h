#pragma once

#include "platform/LargeMemory.h"
#include "render/Sharing.h"
#include "scene/Model.h"

#include <cstdint>

namespace belvor {

class Camera;
class LightSet;

/// How a facet looks in one picture.
struct FacetShade {
    std::uint8_t colour[3] = {0, 0, 0};   ///< Red, green, blue.
    bool reversed = false;                ///< Seen from the side that its normal points away from.
};

/// Gives every facet its colour: light times reflectance, divided by the brightest channel
/// of the scene, so that this one is full. A facet is lit on the side that faces the eye, one
/// seen edge on on the side of its normal. `brightness` is the brightest channel that the last
/// call found, 1.0 before the first: when it has not changed, the facets are gone through once
/// and not twice, with the same result. Reports stage 0 from 2/3 on, every 64 facets. Throws
/// Reporter::Abandoned, std::bad_alloc.
void shadeFacets(const Model& model, const Camera& camera, const LightSet& lighting,
                 LargeVector<FacetShade>& shades, double& brightness, const Sharing& sharing,
                 Reporter& progress);

}   // namespace belvor
