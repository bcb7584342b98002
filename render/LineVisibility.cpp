#include "render/LineVisibility.h"

namespace belvor {
namespace {

double finiteOrZero(double slope) noexcept { return std::isfinite(slope) ? slope : 0.0; }

}   // namespace

LineVisibility::LineVisibility(const Model& scene, const Camera& view, const LineTable& lines,
                               const Outlines* edges)
    : model(scene),
      camera(view),
      table(lines),
      outlines(edges),
      perspective(view.describe().kind == 0),
      parallelTolerance(0x1p-20 * view.scale * (view.far - view.near)),
      known(knownFacets)
{}

LineVisibility::Slopes LineVisibility::slopesOf(std::uint32_t facet) const noexcept
{
    const Vector<3> normal = camera.screenPlane(model.facet(facet).plane).normal();
    return {finiteOrZero(-normal[0] / normal[2]), finiteOrZero(-normal[1] / normal[2]), facet};
}

}   // namespace belvor
