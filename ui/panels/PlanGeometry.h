#pragma once

#include "ui/panels/Pixels.h"
#include "view/PanelRecords.h"

#include <optional>

namespace belvor {

/// The pixel at which a point in panel units is drawn.
PixelPoint panelToPixel(double h, double v, PixelSize client) noexcept;

/// The panel units under a pixel. Half a pixel off panelToPixel, as markers are drawn about
/// the middle of a pixel and the mouse points to its corner.
struct PanelPoint {
    double h = 0.0, v = 0.0;
};
PanelPoint pixelToPanel(int x, int y, PixelSize client) noexcept;

PixelPoint eyePixel(const ViewMarkers& markers, PixelSize client) noexcept;
PixelPoint lookAtPixel(const ViewMarkers& markers, PixelSize client) noexcept;

/// The pixel at the panel's edge where a marker outside of it shows as a pointer; none for one inside.
std::optional<PixelPoint> edgePointer(PixelPoint marker, PixelSize client, PixelScale scale = {}) noexcept;

/// The marker that a press at pixel (x, y) takes, by itself or by its pointer.
MarkerDrag hitMarker(const ViewMarkers& markers, PixelSize client, int x, int y, bool shift,
                     PixelScale scale = {}) noexcept;

/// The line that shows the new sight line while `drag` is at pixel (x, y): it ends there.
PixelLine rubberLine(const ViewMarkers& markers, MarkerDrag drag, PixelSize client, int x, int y) noexcept;

/// What to ask for when `drag` ends at pixel (x, y). Changes nothing.
ViewMarkers draggedMarkers(const ViewMarkers& markers, MarkerDrag drag, PixelSize client, int x,
                           int y) noexcept;

/// What to ask for when `drag` moves its marker by pixels, from where it is exactly.
ViewMarkers nudgedMarkers(const ViewMarkers& markers, MarkerDrag drag, PixelSize client,
                          PixelPoint by) noexcept;

}   // namespace belvor
