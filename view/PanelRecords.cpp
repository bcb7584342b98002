#include "view/PanelRecords.h"

#include "view/Direction.h"

#include <cmath>

namespace belvor {
namespace {

/// How far from the look-at point the eye of a parallel projection is shown, in radii.
constexpr double parallelEyeDistance = 1.7;

}   // namespace

Point<3> shownEye(const ViewParameters& view) noexcept
{
    return view.parallel ? view.lookAt + parallelEyeDistance * (view.eye - view.lookAt).unit() : view.eye;
}

ViewMarkers viewMarkers(const ViewParameters& view, Thumbnail panel) noexcept
{
    const int vertical = panel == Thumbnail::plan ? 1 : 2;
    const Point<3> eye = shownEye(view);
    return {eye[0] * 0.5, eye[vertical] * -0.5, view.lookAt[0] * 0.5, view.lookAt[vertical] * -0.5,
            view.parallel};
}

EyeSlideRecord eyeSlideRecord(const ViewParameters& view) noexcept
{
    const Vector<3> towardsEye = (view.eye - view.lookAt).unit();
    const auto onSlide = [&](const Point<3>& p) { return squash(dot(towardsEye, p.vector())); };
    return {view.parallel ? 1.0 : onSlide(view.eye),
            onSlide(view.lookAt),
            2.0 * std::atan(view.zoom),
            squash(1.0),
            squash(-1.0),
            view.parallel};
}

SphereMarker eyeMarker(const ViewParameters& view) noexcept
{
    const Vector<3> towardsEye = view.eye - view.lookAt;
    return {bearing(towardsEye), elevation(towardsEye), 0};
}

std::optional<SphereMarker> lightMarker(const ViewParameters& view, std::size_t index) noexcept
{
    const ParallelLightSetting& light = view.lights[index];
    if (!(light.intensity > 0.0)) return std::nullopt;
    return SphereMarker{light.bearing, light.elevation, static_cast<std::uint32_t>(index + 1)};
}

}   // namespace belvor
