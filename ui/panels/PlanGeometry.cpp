#include "ui/panels/PlanGeometry.h"

#include <algorithm>

namespace belvor {
namespace {

ViewMarkers movedMarkers(const ViewMarkers& markers, MarkerDrag drag, PanelPoint to) noexcept
{
    ViewMarkers asked = markers;
    if (drag == MarkerDrag::eye || drag == MarkerDrag::eyeKeepingDistance) {
        asked.eyeH = to.h;
        asked.eyeV = to.v;
    } else if (drag == MarkerDrag::lookAt || drag == MarkerDrag::lookAtKeepingDistance) {
        asked.lookAtH = to.h;
        asked.lookAtV = to.v;
    }
    if (drag == MarkerDrag::eyeKeepingDistance) {
        asked.lookAtH = markers.lookAtH + (to.h - markers.eyeH);
        asked.lookAtV = markers.lookAtV + (to.v - markers.eyeV);
    } else if (drag == MarkerDrag::lookAtKeepingDistance) {
        asked.eyeH = markers.eyeH + (to.h - markers.lookAtH);
        asked.eyeV = markers.eyeV + (to.v - markers.lookAtV);
    }
    return asked;
}

}   // namespace

PixelPoint panelToPixel(double h, double v, PixelSize client) noexcept
{
    return {truncatedPixel(((h + 1.0) * client.width + 1.0) / 2.0),
            truncatedPixel(((v + 1.0) * client.height + 1.0) / 2.0)};
}

PanelPoint pixelToPanel(int x, int y, PixelSize client) noexcept
{
    return {2.0 * x / client.width - 1.0, 2.0 * y / client.height - 1.0};
}

PixelPoint eyePixel(const ViewMarkers& markers, PixelSize client) noexcept
{
    return panelToPixel(markers.eyeH, markers.eyeV, client);
}

PixelPoint lookAtPixel(const ViewMarkers& markers, PixelSize client) noexcept
{
    return panelToPixel(markers.lookAtH, markers.lookAtV, client);
}

MarkerDrag hitMarker(const ViewMarkers& markers, PixelSize client, int x, int y, bool shift,
                     PixelScale scale) noexcept
{
    const PixelPoint eye = eyePixel(markers, client), lookAt = lookAtPixel(markers, client);
    const MarkerDrag taken = hitMarker(eye, lookAt, x, y, shift, scale);
    if (taken != MarkerDrag::none) return taken;
    return hitMarker(edgePointer(eye, client, scale).value_or(eye),
                     edgePointer(lookAt, client, scale).value_or(lookAt), x, y, shift, scale);
}

std::optional<PixelPoint> edgePointer(PixelPoint marker, PixelSize client, PixelScale scale) noexcept
{
    const bool inside = marker.x >= 0 && marker.x < client.width && marker.y >= 0 && marker.y < client.height;
    const int inset = scale(8);
    if (inside || client.width <= 2 * inset || client.height <= 2 * inset) return std::nullopt;
    return PixelPoint{std::clamp(marker.x, inset, client.width - 1 - inset),
                      std::clamp(marker.y, inset, client.height - 1 - inset)};
}

PixelLine rubberLine(const ViewMarkers& markers, MarkerDrag drag, PixelSize client, int x, int y) noexcept
{
    const PixelPoint eye = eyePixel(markers, client), lookAt = lookAtPixel(markers, client);
    switch (drag) {
    case MarkerDrag::eye: return {lookAt, {x, y}};
    case MarkerDrag::lookAt: return {eye, {x, y}};
    case MarkerDrag::eyeKeepingDistance: return {{lookAt.x + x - eye.x, lookAt.y + y - eye.y}, {x, y}};
    case MarkerDrag::lookAtKeepingDistance: return {{eye.x + x - lookAt.x, eye.y + y - lookAt.y}, {x, y}};
    case MarkerDrag::none: break;
    }
    return {{x, y}, {x, y}};
}

ViewMarkers draggedMarkers(const ViewMarkers& markers, MarkerDrag drag, PixelSize client, int x,
                           int y) noexcept
{
    return movedMarkers(markers, drag, pixelToPanel(x, y, client));
}

ViewMarkers nudgedMarkers(const ViewMarkers& markers, MarkerDrag drag, PixelSize client,
                          PixelPoint by) noexcept
{
    if (client.width < 1 || client.height < 1) return markers;
    const bool eye = drag == MarkerDrag::eye || drag == MarkerDrag::eyeKeepingDistance;
    const double h = eye ? markers.eyeH : markers.lookAtH, v = eye ? markers.eyeV : markers.lookAtV;
    return movedMarkers(markers, drag, {h + 2.0 * by.x / client.width, v + 2.0 * by.y / client.height});
}

}   // namespace belvor
