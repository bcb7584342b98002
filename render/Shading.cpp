#include "render/Shading.h"

#include "scene/Camera.h"
#include "scene/Light.h"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <vector>

namespace belvor {
namespace {

/// One of the up to two passes over the facets.
struct ShadePass {
    double brightness;   ///< The channel value that becomes full.
    double start;        ///< What the pass reports for the first facet;
    double divisor;      ///< each further facet adds 1 / divisor.
    bool mayRepeat;      ///< The divisor doubles once a channel shows that a second pass will follow.
};

/// Gives facet `index` its shade. The brightest channel of its light, 0 at the least.
double shade(std::uint32_t index, const Model& model, const Camera& camera, const LightSet& lighting,
             double brightness, FacetShade& shade)
{
    const Facet& facet = model.facet(index);
    shade.reversed = !camera.faces(facet.plane);
    const Vector<3>& normal = facet.plane.normal();
    const Colour light = lighting.illuminate(shade.reversed ? -normal : normal);
    double brightest = 0.0;
    for (std::size_t channel = 0; channel < 3; ++channel) {
        const double value = light[channel] * facet.material->colour[channel];
        if (value > brightest) brightest = value;
        shade.colour[channel] = toByte(value / brightness);
    }
    return brightest;
}

/// The brightest channel, 0 at the least.
double run(const ShadePass& pass, const Model& model, const Camera& camera, const LightSet& lighting,
           LargeVector<FacetShade>& shades, const Sharing& sharing, Reporter& progress)
{
    std::vector<double> brightest(sharing.threads, 0.0);   // that each thread met
    std::atomic<bool> repeats = false;
    StageReport report(progress, 64);
    const auto fraction = [&](double facet) {
        return pass.start + facet / (repeats ? 6.0 * model.facetCount() : pass.divisor);
    };
    const auto shadePiece = [&](std::size_t first, std::size_t end, const Workers::Turn& turn) {
        double most = brightest[turn.thread];
        for (auto i = static_cast<std::uint32_t>(first); i < end && !turn.stopping(); ++i) {
            if (turn.thread == 0) report.upTo(i + 1, fraction);
            const double value = shade(i, model, camera, lighting, pass.brightness, shades[i]);
            if (!(value > most)) continue;
            most = value;
            if (pass.mayRepeat && value > pass.brightness) repeats = true;
        }
        brightest[turn.thread] = most;
    };
    Workers::ofProcess().forPieces(sharing.threads, model.facetCount(), sharing.pieceSize, shadePiece);
    report.upTo(model.facetCount(), fraction);
    return *std::max_element(brightest.begin(), brightest.end());
}

}   // namespace

void shadeFacets(const Model& model, const Camera& camera, const LightSet& lighting,
                 LargeVector<FacetShade>& shades, double& brightness, const Sharing& sharing,
                 Reporter& progress)
{
    shades.resize(model.facetCount());
    const double count = model.facetCount();
    double brightest =
        run({brightness, 2.0 / 3.0, 3.0 * count, true}, model, camera, lighting, shades, sharing, progress);
    if (brightest == 0.0) brightest = 1.0;
    if (brightest == brightness) return;
    brightness = brightest;
    run({brightness, 5.0 / 6.0, 6.0 * count, false}, model, camera, lighting, shades, sharing, progress);
}

}   // namespace belvor
