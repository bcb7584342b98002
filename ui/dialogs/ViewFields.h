#pragma once

#include "scene/Model.h"
#include "view/SceneBuilder.h"
#include "view/ViewParameters.h"

#include <array>
#include <optional>

namespace belvor {

/// The numbers of a view as the View Parameters dialog shows them, in the user's units, and
/// the way back from what the user types. Works on the view, the model's place and its units
/// as they were when the dialog opened: another model may be loaded while it is open.
class ViewFields {
public:
    // The fields that can be typed into: three coordinates each of the eye and the look-at
    // point, the zoom, the sky, the ground, then intensity, bearing and elevation of each light.
    static constexpr int eye = 0, lookAt = 3, zoom = 6, sky = 7, ground = 8, lights = 9;
    static constexpr int lightRows = 5;
    static constexpr int count = lights + 3 * lightRows;
    /// By field: the number that was typed; none for a field that was left as it was.
    using Typed = std::array<std::optional<double>, count>;

    ViewFields(const ViewParameters& shownView, const ModelPlace& modelPlace, const Units& modelUnits)
        : view(shownView),
          place(modelPlace),
          units(modelUnits)
    {}

    bool parallel() const noexcept { return view.parallel; }
    /// What to show in a field; the zoom as that projection has it: half the diagonal of the
    /// viewed area, or the full angle in degrees. None in the row of a light that the view lacks.
    std::optional<double> value(int field, bool parallelProjection) const;
    /// A coordinate of the model's centre, and its radius.
    double centre(int axis) const noexcept { return place.centre[axis] * units.scale; }
    double radius() const noexcept { return place.radius * units.scale; }
    std::uint32_t unitsCode() const noexcept { return units.code; }

    /// `current` with what was typed, and with the projection when it is another than at the
    /// start; the zoom is understood in that projection. What was not typed keeps its exact
    /// value. A number from which no finite value follows is ignored, and so is a negative zoom.
    /// An eye on the look-at point leaves both where they are.
    ViewParameters applied(const ViewParameters& current, const Typed& typed, bool parallelProjection) const;

private:
    double viewRadius() const noexcept { return usableRadius(place.radius); }
    double shownCoordinate(const Point<3>& p, int axis) const noexcept;
    double parallelUnit() const noexcept;
    void applyPosition(Point<3>& p, const Typed& typed, int first) const;
    void applyZoom(double& value, double typed, bool parallelProjection) const;

    ViewParameters view;
    ModelPlace place;
    Units units;
};

}   // namespace belvor
