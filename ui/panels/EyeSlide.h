#pragma once

#include "ui/display/Gestures.h"
#include "ui/panels/ArrowButton.h"
#include "ui/panels/PanelDrag.h"
#include "ui/panels/SlideScale.h"
#include "ui/panels/ToolTips.h"
#include "view/PanelRecords.h"

#include <vector>

namespace belvor {

/// The eye slide: the view along its line of sight, with two buttons that step the eye.
class EyeSlide : private PanelDrag::Markers {
public:
    explicit EyeSlide(HWND owner) noexcept : window(owner), drag(owner, *this, IDC_SIZENS), toolTips(owner) {}
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam);
    /// For programs that read the screen aloud.
    AccessibleFacts facts() const;

private:
    void create();
    void size();
    void paint();
    std::vector<Tool> drawMarkers(HDC dc, PixelSize client) const;
    bool takeMarker(const PanelMouse& press) override;
    Ghost::Shape ghostAt(const PanelMouse& mouse) const override;
    std::string valueAt(const PanelMouse& mouse) const override;
    void askFor(const PanelMouse& release) override;
    std::vector<PixelPoint> markerPixels() const override;
    void nudge(std::size_t index, PixelPoint by, bool shift) override;
    void step(bool retreat);
    void wheel(WPARAM wParam);
    void ask(const EyeSlideRecord& request);
    void show(const EyeSlideRecord& shown);
    void drawButton(const DRAWITEMSTRUCT& item) const noexcept;
    void notify(LPARAM lParam);
    SlideScale scale() const noexcept;

    HWND window;
    ArrowButton advanceButton, retreatButton;
    // What is shown before any model: the whole model under an angle of 65 degrees.
    EyeSlideRecord record{0.61132125765973, 0.0, 1.1344640137963, 0.29516723530087, -0.29516723530087, false};
    MarkerDrag taken = MarkerDrag::none;
    PanelDrag drag;
    Gestures gestures{{}};   // of the wheel
    ToolTips toolTips;
};

/// Registers the class "EyeSlide". Throws Win32Error.
void registerEyeSlide(HINSTANCE module);

}   // namespace belvor
