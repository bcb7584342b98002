#include "render/Shading.h"

#include "render/Pauses.h"
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

/// Gives the facets `first` to `end` − 1, at most a block of them, their shades. The brightest channel
/// of their light, 0 at the least.
double shadeBlock(std::uint32_t first, std::uint32_t end, const Model& model, const Camera& camera,
                  const LightSet& lighting, double brightness, FacetShade* shades)
{
    CoordinateBlock normals{};
    ColourBlock values, reflectances{};
    for (std::uint32_t i = first; i < end; ++i) {
        const Facet& facet = model.facet(i);
        const bool reversed = !camera.faces(facet.plane);
        shades[i].reversed = reversed;
        const Vector<3>& normal = facet.plane.normal();
        const std::size_t at = i - first;
        normals.x[at] = reversed ? -normal[0] : normal[0];
        normals.y[at] = reversed ? -normal[1] : normal[1];
        normals.z[at] = reversed ? -normal[2] : normal[2];
        const Colour& colour = facet.material->colour;
        for (std::size_t channel = 0; channel < 3; ++channel)
            reflectances.channels[channel][at] = colour[channel];
    }
    lighting.illuminate(normals, values);
    double brightest = 0.0;
    std::uint8_t bytes[3][CoordinateBlock::size];
    for (std::size_t channel = 0; channel < 3; ++channel)
        for (std::size_t i = 0; i < CoordinateBlock::size; ++i) {
            const double value = values.channels[channel][i] * reflectances.channels[channel][i];
            brightest = value > brightest ? value : brightest;
            bytes[channel][i] = toByte(value / brightness);
        }
    for (std::uint32_t i = first; i < end; ++i)
        for (std::size_t channel = 0; channel < 3; ++channel)
            shades[i].colour[channel] = bytes[channel][i - first];
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
        for (auto i = static_cast<std::uint32_t>(first); i < end && !turn.stopping();) {
            if (turn.thread == 0) report.upTo(i + 1, fraction);
            const auto blockEnd = static_cast<std::uint32_t>(std::min(end, i + CoordinateBlock::size));
            most = std::max(most,
                            shadeBlock(i, blockEnd, model, camera, lighting, pass.brightness, shades.data()));
            if (pass.mayRepeat && most > pass.brightness) repeats = true;
            i = blockEnd;
        }
        brightest[turn.thread] = most;
    };
    Workers::ofProcess().forPieces(sharing.threads, model.facetCount(), sharing.pieceOf(model.facetCount()),
                                   shadePiece);
    report.upTo(model.facetCount(), fraction);
    return *std::max_element(brightest.begin(), brightest.end());
}

}   // namespace

void shadeFacets(const Model& model, const Camera& camera, const LightSet& lighting,
                 LargeVector<FacetShade>& shades, double& brightness, const Sharing& sharing,
                 Reporter& progress)
{
    resizeInSlices(shades, model.facetCount(), [&progress] { progress.check(2, 0, 2.0 / 3.0); });
    const double count = model.facetCount();
    double brightest =
        run({brightness, 2.0 / 3.0, 3.0 * count, true}, model, camera, lighting, shades, sharing, progress);
    if (brightest == 0.0) brightest = 1.0;
    if (brightest == brightness) return;
    brightness = brightest;
    run({brightness, 5.0 / 6.0, 6.0 * count, false}, model, camera, lighting, shades, sharing, progress);
}

}   // namespace belvor
