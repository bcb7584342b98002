#pragma once

#include "ui/display/BitmapWindow.h"
#include "ui/display/ZoomDrag.h"

#include <optional>

namespace belvor {

/// The drawing area: shows the rendered view and turns the mouse into requests to its
/// parent, a click on a point or a closer view.
class Display : public BitmapWindow {
public:
    explicit Display(HWND owner) noexcept;
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam);

private:
    void paint();
    void press(PixelPoint at, bool left);
    void drag(PixelPoint to);
    void release(PixelPoint at);
    void cancel();
    void showBand();
    void removeBand();

    ZoomDrag zoomDrag;
    std::optional<PixelRect> band;   // the rubber rectangle as it stands on the screen
};

/// Registers the class "Display". Throws Win32Error.
void registerDisplay(HINSTANCE module);

}   // namespace belvor
