#pragma once

#include "ui/panels/Pixels.h"

#include <array>
#include <vector>

namespace belvor {

/// The unit vector from one pixel to another; `fallback` when they are the same.
struct PixelDirection {
    double x = 1.0, y = 0.0;
};
PixelDirection directionBetween(PixelPoint from, PixelPoint to, PixelDirection fallback) noexcept;

/// An eye in profile, as polylines: the lids, the eyeball and the pupil.
struct EyeGlyph {
    std::array<PixelPoint, 3> lids;
    std::array<PixelPoint, 4> eyeball;
    std::array<PixelPoint, 3> pupil;

    /// Around all its points.
    PixelRect bounds() const noexcept;
    friend bool operator==(const EyeGlyph&, const EyeGlyph&) noexcept = default;
};

// Sizes below are those of 96 dots an inch; `scale` is that of the monitor.

/// The eye at pixel `eye`, looking along `sight`; it stays within 11 pixels of its place.
EyeGlyph eyeGlyph(PixelPoint eye, PixelDirection sight, PixelScale scale = {}) noexcept;

/// The two strokes of the look-at cross.
std::array<PixelLine, 2> crossStrokes(PixelPoint lookAt, PixelScale scale = {}) noexcept;
/// The rectangle 10 pixels about a point: where the tooltip of a cross or a light lives.
PixelRect around(PixelPoint point, PixelScale scale = {}) noexcept;

/// The line of sight between the two markers, leaving them free: one line, or in parallel
/// projection two, 4 pixels apart.
std::vector<PixelLine> sightLines(PixelPoint eye, PixelPoint lookAt, bool parallel, PixelScale scale = {});

/// A slim triangle within 8 pixels of `at` that points to `marker`, which lies outside the panel.
std::array<PixelPoint, 3> pointerShape(PixelPoint at, PixelPoint marker, PixelScale scale = {}) noexcept;

/// The zoom angle drawn at an eye that looks up: two sides and the bar between them.
struct ZoomWedge {
    std::array<PixelLine, 3> strokes;
    PixelRect bounds;
};
/// The angle in radians.
ZoomWedge zoomWedge(PixelPoint eye, double zoomAngle, PixelScale scale = {}) noexcept;

}   // namespace belvor
