#include "app/PanelRequests.h"

#include "resources/ids.h"
#include "ui/Messages.h"
#include "view/ViewEdits.h"

namespace belvor {
namespace {

/// The panels announce themselves before any model is loaded.
void remember(HWND& panel, LPARAM sender)
{
    if (sender) panel = reinterpret_cast<HWND>(sender);
}

ViewParameters asked(const Belvor& belvor, UINT message, WPARAM wParam, LPARAM lParam)
{
    const ViewParameters& view = belvor.view();
    switch (message) {
    case UM_VIEWMARKERS:
        return moveMarkers(view, lParam == ID_PLAN ? Thumbnail::plan : Thumbnail::elevation,
                           payload(UM_VIEWMARKERS, wParam));
    case UM_EYESLIDE: return moveAlongSight(view, payload(UM_EYESLIDE, wParam));
    case UM_LIGHTMARKER: return turn(view, payload(UM_LIGHTMARKER, wParam));
    case UM_REMOVELIGHTMARKER: return removeLight(view, wParam);
    case UM_DISPLAYCLICK:   // the numbers are signed: a captured mouse leaves the window
        return belvor.camera() ? lookAtPixel(view, *belvor.camera(), belvor.place().viewToModel(),
                                             static_cast<int>(wParam), static_cast<int>(lParam))
                               : view;
    case UM_DISPLAYZOOM: return zoomBy(view, payload(UM_DISPLAYZOOM, wParam));
    case UM_LIGHTINTENSITY: return setIntensity(view, wParam, static_cast<int>(lParam));
    default: return view;
    }
}

}   // namespace

bool applyPanelRequest(Belvor& belvor, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == UM_VIEWGESTURE) {
        const ViewGesture step = payload(UM_VIEWGESTURE, wParam);
        if (belvor.model() && belvor.camera())
            belvor.setView(gestured(belvor.view(), step, *belvor.camera(), belvor.place().viewToModel()),
                           step.number);
        return true;
    }
    switch (message) {
    case UM_EYESLIDE: remember(belvor.windows.eyeSlide, lParam); break;
    case UM_LIGHTMARKER:
    case UM_REMOVELIGHTMARKER: remember(belvor.windows.sphere, lParam); break;
    case UM_VIEWMARKERS:
    case UM_DISPLAYCLICK:
    case UM_DISPLAYZOOM:
    case UM_LIGHTINTENSITY: break;
    default: return false;
    }
    if (belvor.model()) belvor.setView(asked(belvor, message, wParam, lParam));
    return true;
}

}   // namespace belvor
