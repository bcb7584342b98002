#pragma once

#include "ui/display/BitmapWindow.h"
#include "ui/panels/PanelPainting.h"
#include "ui/panels/ToolTips.h"
#include "view/PanelRecords.h"

namespace belvor {

/// The plan and the elevation panel: a thumbnail of the model under the two markers, which
/// the mouse drags. Which of the two it is, its control number says.
class Plan : public BitmapWindow {
public:
    explicit Plan(HWND owner) noexcept;
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam);

private:
    struct RubberLine {
        PixelLine line;
        void draw(HDC dc) const;
    };

    void paint();
    void press(int x, int y, bool shift);
    void drawTo(int x, int y);
    void release(int x, int y);
    void cancel();
    void show(const ViewMarkers& shown);
    void notify(LPARAM lParam);

    ViewMarkers markers{-0.5, 0.5, 0.0, 0.0, false};
    MarkerDrag drag = MarkerDrag::none;
    PixelPoint last;   // of the mouse, while dragging
    Ghost<RubberLine> ghost;
    DragCapture capture;
    ToolTips toolTips;
};

/// Registers the class "Plan". Throws Win32Error.
void registerPlan(HINSTANCE module);

}   // namespace belvor
