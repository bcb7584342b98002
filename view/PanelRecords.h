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
/// +1 at the right and bottom edge.
struct ViewMarkers {
    double eyeH = -0.5, eyeV = 0.5;
    double lookAtH = 0.0, lookAtV = 0.0;
    bool parallel = false;
    friend bool operator==(const ViewMarkers&, const ViewMarkers&) noexcept = default;   // exact
};

/// The view along its own line of sight. Positions are squashed distances, −1 to 1.
struct EyeSlideRecord {
    double eye = 0.61132125765973;
    double lookAt = 0.0;
    double zoomAngle = 1.1344640137963;   ///< The full angle, in radians.
    double extentTop = 0.29516723530087;
    double extentBottom = -0.29516723530087;
    bool parallel = false;
    friend bool operator==(const EyeSlideRecord&, const EyeSlideRecord&) noexcept = default;
};

/// A direction on the sphere, in degrees.
struct SphereMarker {
    double bearing = 0.0, elevation = 0.0;
    std::uint32_t item = 0;   ///< 0 is the eye, k + 1 is parallel light k.
    bool present = true;
    friend bool operator==(const SphereMarker&, const SphereMarker&) noexcept = default;
};

/// The eye as the plan and elevation panels show it: in parallel projection near the model.
Point<3> shownEye(const ViewParameters& view) noexcept;

ViewMarkers viewMarkers(const ViewParameters& view, Thumbnail panel) noexcept;
EyeSlideRecord eyeSlideRecord(const ViewParameters& view) noexcept;
/// The eye's direction, seen from the look-at point.
SphereMarker eyeMarker(const ViewParameters& view) noexcept;
/// The marker of light `index` of the view; none when that light is off.
std::optional<SphereMarker> lightMarker(const ViewParameters& view, std::size_t index) noexcept;

}   // namespace belvor
