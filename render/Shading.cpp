#include "render/Shading.h"

#include "errors/Reporter.h"
#include "scene/Camera.h"
#include "scene/Light.h"

namespace belvor {
namespace {

/// A facet seen edge on has no side towards the eye: it goes back to the one that its reader
/// gave it, so that the brightness of a scene never depends on earlier views.
void turnToEye(Facet& facet, bool& turned, const Camera& camera)
{
    if (camera.faces(facet.plane) && !(turned && camera.faces(-facet.plane))) return;
    facet.plane = -facet.plane;
    turned = !turned;
}

/// One pass over the facets, reported from `start` on over a share 1/`divisor` a facet; the
/// share is halved once a channel above `brightness` shows that a second pass will follow.
/// The brightest channel, 0 at the least.
double shadePass(BlockStore<Facet>& facets, LargeVector<FacetShade>& shades, const Camera& camera,
                 const LightSet& lighting, double brightness, double start, double divisor, bool mayRepeat,
                 Reporter& progress)
{
    double brightest = 0.0;
    for (std::uint32_t i = 0; i < facets.size(); ++i) {
        if (i % 64 == 0) progress.check(2, 0, start + i / divisor);
        Facet& facet = facets[i];
        FacetShade& shade = shades[i];
        turnToEye(facet, shade.turned, camera);
        const Colour light = lighting.illuminate(facet.plane.normal());
        for (std::size_t channel = 0; channel < 3; ++channel) {
            const double value = light[channel] * facet.material->colour[channel];
            if (value > brightest) brightest = value;
            shade.colour[channel] = toByte(value / brightness);
        }
        if (mayRepeat && brightest > brightness) {
            mayRepeat = false;
            divisor = 6.0 * facets.size();
        }
    }
    return brightest;
}

}   // namespace

void shadeFacets(BlockStore<Facet>& facets, LargeVector<FacetShade>& shades, const Camera& camera,
                 const LightSet& lighting, double& brightness, Reporter& progress)
{
    shades.resize(facets.size());
    const double count = facets.size();
    double brightest =
        shadePass(facets, shades, camera, lighting, brightness, 2.0 / 3.0, 3.0 * count, true, progress);
    if (brightest == 0.0) brightest = 1.0;
    if (brightest == brightness) return;
    brightness = brightest;
    shadePass(facets, shades, camera, lighting, brightness, 5.0 / 6.0, 6.0 * count, false, progress);
}

}   // namespace belvor
