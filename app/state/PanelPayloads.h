#pragma once

#include <cstdint>

namespace belvor {

// The records that travel between the main window and its panels, in both directions, as
// pointers that are good for the length of one sent message. Other programs on the same
// window rely on the order of the members: append nothing, move nothing.

/// The markers of the Plan or the Elevation panel, in panel units: −1 at the left and top
/// edge, +1 at the right and bottom edge.
struct ViewMarkers {
    double eyeH = 0;
    double eyeV = 0;
    double lookAtH = 0;
    double lookAtV = 0;
    bool parallel = false;
    friend bool operator==(const ViewMarkers&, const ViewMarkers&) noexcept = default;
};

/// What the eye slide shows, in slide coordinates: −1 at the top, +1 at the bottom.
struct EyeSlideRecord {
    double eye = 0;
    double lookAt = 0;
    double zoomAngle = 0;      ///< Radians, the full angle.
    double extentTop = 0;
    double extentBottom = 0;
    bool parallel = false;
    friend bool operator==(const EyeSlideRecord&, const EyeSlideRecord&) noexcept = default;
};

/// One point of the light-direction sphere.
struct SphereMarker {
    double bearing = 0;        ///< Degrees.
    double elevation = 0;      ///< Degrees.
    std::uint32_t item = 0;    ///< 0 is the eye, k + 1 is parallel light k.
    bool present = true;
    friend bool operator==(const SphereMarker&, const SphereMarker&) noexcept = default;
};

}   // namespace belvor
