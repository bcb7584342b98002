#pragma once

#include "ui/panels/ArrowButton.h"
#include "ui/panels/PanelDrag.h"
#include "ui/panels/SphereProjection.h"
#include "ui/panels/ToolTips.h"
#include "view/PanelRecords.h"

#include <array>
#include <vector>

namespace belvor {

/// The light-direction sphere: the eye and the lights as seen from above, with four buttons
/// that turn the eye.
class Stereogram : private PanelDrag::Markers {
public:
    explicit Stereogram(HWND owner) noexcept : window(owner), drag(owner, *this, IDC_SIZEALL), toolTips(owner)
    {}
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam);
    /// For programs that read the screen aloud.
    AccessibleFacts facts() const;

private:
    void create();
    void size();
    void paint();
    std::vector<Tool> drawMarkers(HDC dc, const SphereDisc& disc) const;
    bool takeMarker(const PanelMouse& press) override;
    Ghost::Shape ghostAt(const PanelMouse& mouse) const override;
    std::string valueAt(const PanelMouse& mouse) const override;
    void askFor(const PanelMouse& release) override;
    std::vector<PixelPoint> markerPixels() const override;
    void nudge(std::size_t index, PixelPoint by, bool shift) override;
    std::vector<int> items() const;
    void turn(int button);
    void ask(const SphereDirection& direction, int item);
    void invalidate(bool changed);
    void drawButton(const DRAWITEMSTRUCT& item) const noexcept;
    void notify(LPARAM lParam);
    SphereDisc disc() const noexcept;

    HWND window;
    std::array<ArrowButton, 4> buttons;   // in the order of SphereArrow
    SphereMarkers markers;
    int taken = -1;   // the item that is dragged
    PanelDrag drag;
    ToolTips toolTips;
};

/// Registers the class "Stereogram". Throws Win32Error.
void registerStereogram(HINSTANCE module);

}   // namespace belvor
