#pragma once

#include "scene/BlockStore.h"
#include "scene/Model.h"

namespace belvor {

class Camera;
class LightSet;
class Reporter;

/// Gives every facet its colour: light times reflectance, divided by the brightest channel
/// of the scene, so that this one is full. Turns every plane towards the eye. `brightness`
/// is the brightest channel that the last call for this scene found; the facets are gone
/// through a second time only when it has changed. Reports stage 0 from 2/3 on, every 64
/// facets. `shades` are those of the last call, one for each facet, or none before the first.
void shadeFacets(BlockStore<Facet>& facets, LargeVector<FacetShade>& shades, const Camera& camera,
                 const LightSet& lighting, double& brightness, Reporter& progress);

}   // namespace belvor
