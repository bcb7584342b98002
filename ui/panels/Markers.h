#pragma once

#include "platform/win32/Windows.h"
#include "ui/panels/MarkerShapes.h"

namespace belvor {

// Painting of what the panels share. The shapes come from MarkerShapes; a device context in
// R2_NOTXORPEN draws the same thing as a ghost that a second drawing takes away. Sizes are those
// of 96 dots an inch; `scale` is that of the monitor.

RECT toRect(const PixelRect& rectangle) noexcept;

void drawLine(HDC dc, const PixelLine& line) noexcept;   // with the selected pen
/// `onDisc`: on the white disc of the sphere, where the outline of a contrast theme is black.
void drawEyeGlyph(HDC dc, const EyeGlyph& glyph, PixelScale scale, bool onDisc = false) noexcept;
/// Blue on dark blue; as a ghost the strokes must be drawn once only, so it gets one pen.
void drawCross(HDC dc, PixelPoint lookAt, PixelScale scale, bool ghost = false) noexcept;
void drawZoomWedge(HDC dc, const ZoomWedge& wedge, PixelScale scale) noexcept;
/// The pointer at the panel's edge to the eye (green) or the look-at point (blue) outside of it.
void drawPointer(HDC dc, PixelPoint at, PixelPoint marker, bool eye, PixelScale scale) noexcept;
/// A light's disc of radius 6; only its outline for a light below the equator.
void drawLight(HDC dc, PixelPoint position, int light, bool below, PixelScale scale) noexcept;
/// The circle about an eye below the equator.
void drawBelowCircle(HDC dc, PixelPoint position, PixelScale scale) noexcept;

/// Whether black is easier to read on that colour than white.
bool isBright(COLORREF colour) noexcept;

/// The colour of a light; lights beyond the eighth are black. The objects live as long as the program.
COLORREF lightColour(int light) noexcept;
HBRUSH lightBrush(int light) noexcept;
HPEN lightPen(int light, PixelScale scale);   ///< Two pixels wide.

}   // namespace belvor
