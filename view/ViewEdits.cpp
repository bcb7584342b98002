#include "view/ViewEdits.h"

#include "view/Direction.h"
#include "view/Intensity.h"

#include <algorithm>
#include <cmath>

namespace belvor {
namespace {

ViewParameters changed(const ViewParameters& view, ViewParameters next)
{
    if (!next.finite() || next == view || losesSight(view, next)) return view;
    next.imageSaved = false;
    return next;
}

constexpr std::size_t sliderOfFirstLight = 2;
constexpr std::size_t mostLights = 9;

}   // namespace

bool losesSight(const ViewParameters& view, const ViewParameters& next) noexcept
{
    if (next.eye == view.eye && next.lookAt == view.lookAt) return false;
    double size = 1.0;
    for (int axis = 0; axis < 3; ++axis)
        size = std::max({size, std::fabs(next.lookAt[axis]), std::fabs(view.eye[axis])});
    return (next.eye - next.lookAt).length() <= 1e-12 * size;
}

ViewParameters movedTo(const ViewParameters& view, const ModelPlace& from, const ModelPlace& to)
{
    const double before = usableRadius(from.radius), after = usableRadius(to.radius);
    if (from.centre == to.centre && before == after) return view;
    const UniformTransform<3> toModel = from.viewToModel(), toView = to.viewToModel();
    ViewParameters next = view;
    next.eye = toView.unapply(toModel(view.eye));
    next.lookAt = toView.unapply(toModel(view.lookAt));
    if (view.parallel) next.zoom = view.zoom * (before / after);
    return changed(view, next);
}

ViewParameters moveMarkers(const ViewParameters& view, Thumbnail panel, const ViewMarkers& asked)
{
    const ViewMarkers shown = viewMarkers(view, panel);
    const bool lookAtMoved = asked.lookAtH != shown.lookAtH || asked.lookAtV != shown.lookAtV;
    const bool eyeMoved = asked.eyeH != shown.eyeH || asked.eyeV != shown.eyeV;
    if (!lookAtMoved && !eyeMoved) return view;

    // The hidden coordinate is that of the eye as shown: in parallel projection the stored
    // eye may stand much farther, and a drag of the look-at point alone would tilt the view.
    const int vertical = panel == Thumbnail::plan ? 1 : 2;
    ViewParameters next = view;
    next.eye = shownEye(view);
    if (lookAtMoved) {
        next.lookAt[0] = asked.lookAtH * 2.0;
        next.lookAt[vertical] = asked.lookAtV * -2.0;
    }
    if (eyeMoved) {
        next.eye[0] = asked.eyeH * 2.0;
        next.eye[vertical] = asked.eyeV * -2.0;
    }
    if (view.parallel) next.eye = shownEye(next);
    return changed(view, next);
}

ViewParameters moveAlongSight(const ViewParameters& view, const EyeSlideRecord& asked)
{
    const EyeSlideRecord shown = eyeSlideRecord(view);
    const Vector<3> towardsEye = (view.eye - view.lookAt).unit();
    const auto step = [&](const Point<3>& from, double position) {
        return (slideDistance(position) - dot(towardsEye, from.vector())) * towardsEye;
    };
    ViewParameters next = view;
    if (view.parallel) {   // the slide shows the eye at its end, wherever it is
        if (asked.lookAt == shown.lookAt) return view;
        const Vector<3> both = step(view.lookAt, asked.lookAt);
        next.eye += both;
        next.lookAt += both;
    } else {
        if (asked.eye != shown.eye) next.eye += step(view.eye, asked.eye);
        if (asked.lookAt != shown.lookAt) next.lookAt += step(view.lookAt, asked.lookAt);
    }
    return changed(view, next);
}

ViewParameters turn(const ViewParameters& view, const SphereMarker& asked)
{
    ViewParameters next = view;
    if (asked.item == 0) {
        const SphereMarker shown = eyeMarker(view);
        if (asked.bearing == shown.bearing && asked.elevation == shown.elevation) return view;
        next.eye =
            view.lookAt + (view.eye - view.lookAt).length() * direction(asked.bearing, asked.elevation);
    } else {
        if (asked.item > view.lights.size()) return view;
        ParallelLightSetting& light = next.lights[asked.item - 1];
        light.bearing = asked.bearing;
        light.elevation = asked.elevation;
    }
    return changed(view, next);
}

ViewParameters removeLight(const ViewParameters& view, std::size_t index)
{
    if (index >= view.lights.size()) return view;
    ViewParameters next = view;
    next.lights[index].intensity = 0.0;
    return changed(view, next);
}

ViewParameters lookAtPixel(const ViewParameters& view, const Camera& camera,
                           const UniformTransform<3>& viewToModel, int x, int y)
{
    const double column = x, row = y;   // a pixel is sampled at its own coordinates
    ViewParameters next = view;
    if (view.parallel) {
        const Point<3> seen = viewToModel.unapply(camera.unproject({column, row, 0.0}));
        const Plane across((view.lookAt - view.eye).unit(), view.lookAt);
        next.lookAt = across.project(seen);
        next.eye += next.lookAt - view.lookAt;
    } else {
        const Point<3> seen = camera.unproject({column, row, -camera.scale});   // at unit distance
        next.lookAt = view.eye + (view.lookAt - view.eye).length() * (seen - camera.eye).unit();
    }
    return changed(view, next);
}

ViewParameters zoomBy(const ViewParameters& view, double factor)
{
    if (!(factor >= 0.0)) return view;
    ViewParameters next = view;
    next.zoom *= factor;
    return changed(view, next);
}

ViewParameters setIntensity(const ViewParameters& view, std::size_t slider, int position)
{
    if (slider >= sliderOfFirstLight + mostLights) return view;
    position = std::clamp(position, 0, 21);
    ViewParameters next = view;
    if (slider >= sliderOfFirstLight && slider - sliderOfFirstLight >= next.lights.size())
        next.lights.resize(slider - sliderOfFirstLight + 1);
    double& intensity = slider == 0   ? next.skyIntensity
                        : slider == 1 ? next.groundIntensity
                                      : next.lights[slider - sliderOfFirstLight].intensity;
    // A thumb that is let go where it was: the intensity keeps the digits that no position stands for.
    if (intensityToSlider(intensity) != position) intensity = sliderToIntensity(position);
    return changed(view, next);
}

}   // namespace belvor
