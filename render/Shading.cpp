#include "render/Shading.h"

#include "errors/Reporter.h"
#include "scene/Camera.h"
#include "scene/Light.h"

namespace belvor {
namespace {

/// One of the up to two passes over the facets.
struct ShadePass {
    double brightness;   ///< The channel value that becomes full.
    double start;        ///< What the pass reports for the first facet;
    double divisor;      ///< each further facet adds 1 / divisor.
    bool mayRepeat;      ///< The divisor doubles once a channel shows that a second pass will follow.
};

/// The brightest channel, 0 at the least.
double run(ShadePass pass, const Model& model, const Camera& camera, const LightSet& lighting,
           LargeVector<FacetShade>& shades, Reporter& progress)
{
    double brightest = 0.0;
    for (std::uint32_t i = 0; i < model.facetCount(); ++i) {
        if (i % 64 == 0) progress.check(2, 0, pass.start + i / pass.divisor);
        const Facet& facet = model.facet(i);
        FacetShade& shade = shades[i];
        shade.reversed = !camera.faces(facet.plane);
        const Vector<3>& normal = facet.plane.normal();
        const Colour light = lighting.illuminate(shade.reversed ? -normal : normal);
        for (std::size_t channel = 0; channel < 3; ++channel) {
            const double value = light[channel] * facet.material->colour[channel];
            if (value > brightest) brightest = value;
            shade.colour[channel] = toByte(value / pass.brightness);
        }
        if (pass.mayRepeat && brightest > pass.brightness) {
            pass.mayRepeat = false;
            pass.divisor = 6.0 * model.facetCount();
        }
    }
    return brightest;
}

}   // namespace

void shadeFacets(const Model& model, const Camera& camera, const LightSet& lighting,
                 LargeVector<FacetShade>& shades, double& brightness, Reporter& progress)
{
    shades.resize(model.facetCount());
    const double count = model.facetCount();
    double brightest =
        run({brightness, 2.0 / 3.0, 3.0 * count, true}, model, camera, lighting, shades, progress);
    if (brightest == 0.0) brightest = 1.0;
    if (brightest == brightness) return;
    brightness = brightest;
    run({brightness, 5.0 / 6.0, 6.0 * count, false}, model, camera, lighting, shades, progress);
}

}   // namespace belvor
