#pragma once

#include "view/SceneBuilder.h"
#include "view/ViewParameters.h"

#include <cstddef>
#include <cstdint>
#include <optional>

namespace belvor {

// What the main window and a panel send each other: to the panel what it is to show, from
// the panel what the user asks for. Other programs send and read these records too, so
// their members keep their order.

/// The markers of the plan or elevation panel, in panel units: −1 at the left and top edge,
/// +1 at the right and bottom edge, more outside; one unit is two radii of the model.
struct ViewMarkers {
    double eyeH = -0.5, eyeV = 0.5;        ///< h to the right, v down.
    double lookAtH = 0.0, lookAtV = 0.0;   ///< The same.
    bool parallel = false;                 ///< The view is a parallel projection.
    friend bool operator==(const ViewMarkers&, const ViewMarkers&) noexcept = default;   // exact
};

/// The view along its own line of sight. Positions are squash()ed distances from the model's
/// centre, −1 to 1; they grow from the look-at point towards the eye.
struct EyeSlideRecord {
    double eye = 0.61132125765973;   ///< 1 in parallel projection.
    double lookAt = 0.0;
    double zoomAngle = 1.1344640137963;        ///< The full angle, in radians.
    double extentTop = 0.29516723530087;       ///< Of the model, on the eye's side.
    double extentBottom = -0.29516723530087;   ///< On the far side.
    bool parallel = false;                     ///< There is no zoom angle.
    friend bool operator==(const EyeSlideRecord&, const EyeSlideRecord&) noexcept = default;
};

/// A direction on the sphere.
struct SphereMarker {
    double bearing = 0.0;     ///< Degrees, 0 along −y, growing towards +x; any number of turns.
    double elevation = 0.0;   ///< Degrees above the horizon; a request may go beyond ±90.
    std::uint32_t item = 0;   ///< 0 is the eye, k + 1 is parallel light k.
    bool present = true;      ///< Always; a light goes by a message of its own.
    friend bool operator==(const SphereMarker&, const SphereMarker&) noexcept = default;
};

/// The eye as the plan and elevation panels show it: in parallel projection near the model.
Point<3> shownEye(const ViewParameters& view) noexcept;

// What the panels show for a view that can be shown (ViewParameters::finite). Any thread.

/// For the plan or the elevation panel.
ViewMarkers viewMarkers(const ViewParameters& view, Thumbnail panel) noexcept;
/// For the eye slide.
EyeSlideRecord eyeSlideRecord(const ViewParameters& view) noexcept;
/// The eye's direction, seen from the look-at point.
SphereMarker eyeMarker(const ViewParameters& view) noexcept;
/// The marker of light `index` of the view, from 0 and below its number of lights; none when it is off.
std::optional<SphereMarker> lightMarker(const ViewParameters& view, std::size_t index) noexcept;

}   // namespace belvor
