#include "app/PanelRequests.h"

#include "resources/ids.h"
#include "ui/Messages.h"

namespace belvor {
namespace {

/// The panels announce themselves before any model is loaded.
void remember(HWND& panel, LPARAM sender)
{
    if (sender) panel = reinterpret_cast<HWND>(sender);
}

}   // namespace

bool applyPanelRequest(Belvor& belvor, UINT message, WPARAM wParam, LPARAM lParam)
{
    Session& session = belvor.session();
    switch (message) {
    case UM_VIEWMARKERS:
        session.moveMarkers(lParam == ID_PLAN ? Thumbnail::plan : Thumbnail::elevation,
                            payload(UM_VIEWMARKERS, wParam));
        return true;
    case UM_EYESLIDE:
        remember(belvor.windows.eyeSlide, lParam);
        session.moveAlongSight(payload(UM_EYESLIDE, wParam));
        return true;
    case UM_LIGHTMARKER:
        remember(belvor.windows.sphere, lParam);
        session.turn(payload(UM_LIGHTMARKER, wParam));
        return true;
    case UM_REMOVELIGHTMARKER:
        remember(belvor.windows.sphere, lParam);
        session.removeLight(wParam);
        return true;
    case UM_DISPLAYCLICK:   // the numbers are signed: a captured mouse leaves the window
        session.lookAtPixel(static_cast<int>(wParam), static_cast<int>(lParam));
        return true;
    case UM_DISPLAYZOOM: session.zoomBy(payload(UM_DISPLAYZOOM, wParam)); return true;
    case UM_LIGHTINTENSITY: session.setIntensity(wParam, static_cast<int>(lParam)); return true;
    case UM_VIEWGESTURE: session.gesture(payload(UM_VIEWGESTURE, wParam)); return true;
    default: return false;
    }
}

}   // namespace belvor
