#pragma once

#include "ui/ValueTip.h"
#include "ui/display/BitmapWindow.h"
#include "ui/display/Gestures.h"
#include "ui/display/ZoomDrag.h"

#include <optional>

namespace belvor {

/// The drawing area: shows the rendered view and turns the mouse into requests to its
/// parent: a click on a point, a closer view, or a gesture that moves the view step by step.
class Display : public BitmapWindow {
public:
    explicit Display(HWND owner) noexcept;
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam);

private:
    void paint();
    void press(PixelPoint at);
    void pressOther(PixelPoint at, ViewGesture::Kind kind);
    bool leavesFullScreen();
    void wheel(WPARAM wParam, bool horizontal);
    void ask(const ViewGesture& step);
    bool pressKey(WPARAM key);
    void showFocus(bool focused);
    void repaintEdge();
    void drag(PixelPoint to);
    void release(PixelPoint at);
    void cancel();
    void showBand();
    void removeBand();

    ZoomDrag zoomDrag;
    Gestures gestures;
    ValueTip tip;
    std::optional<PixelRect> band;   // the rubber rectangle as it stands on the screen
};

/// Registers the class "Display". Throws Win32Error.
void registerDisplay(HINSTANCE module);

}   // namespace belvor
