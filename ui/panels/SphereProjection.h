#pragma once

#include "ui/panels/Pixels.h"
#include "view/PanelRecords.h"
#include "view/PixelArea.h"

#include <array>
#include <cstddef>

namespace belvor {

/// A direction in degrees, as a record or a light keeps it.
struct SphereDirection {
    double bearing = 0.0, elevation = 0.0;
    friend bool operator==(const SphereDirection&, const SphereDirection&) noexcept = default;
};

/// How a drag reads the mouse: snapping to the coarse grid (Shift), below the equator (Ctrl).
struct SphereKeys {
    bool snap = false, below = false;
};

/// The disc that shows the hemisphere from above: the zenith in its centre, the horizon at
/// its rim, bearing 0 at the bottom and 90 at the right.
struct SphereDisc {
    int radiusX = 0, radiusY = 0;   ///< Of the innermost of four rings; the fourth is the rim.
    PixelPoint centre;
    PixelScale pixels;   ///< Of the monitor.

    /// In a panel of that size.
    explicit SphereDisc(PixelSize client, PixelScale monitor = {}) noexcept;

    /// False when the panel is too small: draw nothing, take no mouse.
    bool usable() const noexcept { return radiusX > 0 && radiusY > 0; }
    /// A direction below the equator lands on its mirror's point. Whole degrees of elevation
    /// count, so that a marker does not creep while its view is turned.
    PixelPoint toPixel(const SphereDirection& direction) const noexcept;
    /// For a usable disc; the horizon for a pixel outside the rim.
    SphereDirection toDirection(int x, int y, SphereKeys keys) const noexcept;
    /// The direction whose point lies so many pixels from that of `direction`, on the same side of
    /// the equator; the horizon beyond the rim. For a usable disc.
    SphereDirection nudged(const SphereDirection& direction, PixelPoint by) const noexcept;
    /// The box of ring 1 to 4.
    PixelRect ring(int number) const noexcept;
};

constexpr int sphereLights = 8;

/// What the sphere shows.
struct SphereMarkers {
    SphereDirection eye{-45.0, 30.0};
    struct Light {
        SphereDirection direction;
        bool present = false;
    };
    std::array<Light, sphereLights> lights;

    /// Takes over a marker; false when nothing that is drawn changed.
    bool show(const SphereMarker& marker) noexcept;
    /// Hides a light; false when it was hidden or is none.
    bool hide(std::size_t light) noexcept;
    /// The direction of item 0 (the eye) or k + 1 (light k).
    const SphereDirection& of(int item) const noexcept;
};

/// The item that a press takes, −1 for none: the eye first, then the lights that are on.
int hitItem(const SphereMarkers& markers, const SphereDisc& disc, int x, int y) noexcept;

enum class SphereArrow { right, down, left, up };

/// The eye's direction after a click on an arrow: one degree, or five with `large`.
SphereDirection turnedEye(const SphereDirection& eye, SphereArrow arrow, bool large) noexcept;

/// The sizes of the system's scroll arrows, in pixels.
struct ArrowSizes {
    int verticalWidth, verticalHeight, horizontalWidth, horizontalHeight;
};
/// A cross of arrows at the bottom centre of the panel.
PixelArea arrowArea(SphereArrow arrow, PixelSize client, const ArrowSizes& sizes) noexcept;

}   // namespace belvor
