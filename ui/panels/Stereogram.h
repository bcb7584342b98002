#pragma once

#include "ui/panels/ArrowButton.h"
#include "ui/panels/PanelPainting.h"
#include "ui/panels/SphereProjection.h"
#include "ui/panels/ToolTips.h"
#include "view/PanelRecords.h"

#include <array>

namespace belvor {

/// The light-direction sphere: the eye and the lights as seen from above, with four buttons
/// that turn the eye.
class Stereogram {
public:
    explicit Stereogram(HWND owner) noexcept : window(owner), ghost(owner), toolTips(owner) {}
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam);

private:
    struct DraggedItem {
        int item;
        PixelPoint place, centre;
        bool below;
        void draw(HDC dc) const;
    };

    void create();
    void size();
    void paint();
    std::vector<Tool> drawMarkers(HDC dc, const SphereDisc& disc) const;
    void press(int x, int y, SphereKeys keys);
    void drawTo(int x, int y, SphereKeys keys);
    void setBelow(bool below);
    void release(int x, int y, SphereKeys keys);
    void cancel();
    void turn(int button);
    void ask(const SphereDirection& direction, int item);
    void invalidate(bool changed);
    void notify(LPARAM lParam);
    SphereDisc disc() const noexcept { return SphereDisc(clientSize(window)); }

    HWND window;
    std::array<ArrowButton, 4> buttons;   // in the order of SphereArrow
    SphereMarkers markers;
    int dragItem = -1;
    Ghost<DraggedItem> ghost;
    DragCapture capture;
    ToolTips toolTips;
};

/// Registers the class "Stereogram". Throws Win32Error.
void registerStereogram(HINSTANCE module);

}   // namespace belvor
