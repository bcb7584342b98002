#include "ui/dialogs/ViewFields.h"

#include "calcore/Angle.h"
#include "view/ViewEdits.h"

#include <algorithm>
#include <cmath>

namespace belvor {
namespace {

double& lightMember(ParallelLightSetting& light, int member) noexcept
{
    return member == 0 ? light.intensity : member == 1 ? light.bearing : light.elevation;
}

void take(double& value, const std::optional<double>& typed)
{
    if (typed && std::isfinite(*typed)) value = *typed;
}

}   // namespace

double ViewFields::shownCoordinate(const Point<3>& p, int axis) const noexcept
{
    return (p[axis] * viewRadius() + place.centre[axis]) * units.scale;
}

double ViewFields::parallelUnit() const noexcept { return units.scale * parallelHalfDiagonal * viewRadius(); }

std::optional<double> ViewFields::value(int field, bool parallelProjection) const
{
    if (field < lookAt) return shownCoordinate(view.eye, field - eye);
    if (field < zoom) return shownCoordinate(view.lookAt, field - lookAt);
    if (field == zoom)
        return parallelProjection ? view.zoom * parallelUnit() : toDegrees(2.0 * std::atan(view.zoom));
    if (field == sky) return view.skyIntensity;
    if (field == ground) return view.groundIntensity;
    const auto row = static_cast<std::size_t>((field - lights) / 3);
    if (row >= view.lights.size()) return std::nullopt;
    ParallelLightSetting light = view.lights[row];
    return lightMember(light, (field - lights) % 3);
}

ViewParameters ViewFields::applied(const ViewParameters& current, const Typed& typed,
                                   bool parallelProjection) const
{
    ViewParameters result = current;
    result.imageSaved = false;
    applyPosition(result.eye, typed, eye);
    applyPosition(result.lookAt, typed, lookAt);
    if (losesSight(current, result)) {
        result.eye = current.eye;
        result.lookAt = current.lookAt;
    }
    if (parallelProjection != view.parallel) result.parallel = parallelProjection;
    if (typed[zoom]) applyZoom(result.zoom, *typed[zoom], parallelProjection);
    take(result.skyIntensity, typed[sky]);
    take(result.groundIntensity, typed[ground]);
    const std::size_t rows = std::min<std::size_t>(lightRows, result.lights.size());
    for (std::size_t row = 0; row < rows; ++row)
        for (int member = 0; member < 3; ++member)
            take(lightMember(result.lights[row], member),
                 typed[static_cast<std::size_t>(lights + member) + 3 * row]);
    return result;
}

void ViewFields::applyPosition(Point<3>& p, const Typed& typed, int first) const
{
    const double radius = viewRadius(), unit = units.scale * radius;
    if (unit == 0.0 || !std::isfinite(unit)) return;
    for (int axis = 0; axis < 3; ++axis) {
        const std::optional<double>& number = typed[static_cast<std::size_t>(first + axis)];
        if (number) take(p[axis], (*number / units.scale - place.centre[axis]) / radius);
    }
}

void ViewFields::applyZoom(double& value, double typed, bool parallelProjection) const
{
    if (parallelProjection) {
        const double unit = parallelUnit();
        if (unit != 0.0 && std::isfinite(unit) && typed / unit >= 0.0) take(value, typed / unit);
    } else if (typed >= 0.0 && typed < 180.0) {
        take(value, std::tan(toRadians(typed) / 2.0));
    }
}

}   // namespace belvor
