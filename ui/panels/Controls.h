#pragma once

#include "platform/win32/Handles.h"
#include "ui/ValueTip.h"
#include "ui/panels/ControlsLayout.h"
#include "ui/panels/ViewToolbar.h"

#include <array>

namespace belvor {

/// The control strip: the view toolbar, the plan and elevation panels, the eye slide, the
/// light-direction sphere and the light sliders. It passes what they ask for to its parent,
/// the main window, which answers the panels directly, and the strip only with
/// UM_LIGHTINTENSITY, which sets a slider.
class Controls {
public:
    explicit Controls(HWND owner) noexcept : window(owner), tip(owner) {}
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam);

private:
    void create(const CREATESTRUCTW& record);
    void size();
    void layOutPanels();
    void scrollTo(int offset);
    void scroll(int code);
    void wheel(int delta);
    void reveal(HWND child);
    void drawMarks(HDC dc) const;
    void followColours();
    void keepFocus(bool shown);
    void paint() const;
    void sliderMoved(int code, HWND slider);
    void setSlider(WPARAM slider, LPARAM position);
    void endDrag();
    void notify(LPARAM lParam) const;

    HWND window;
    HWND plan = nullptr, elevation = nullptr, stereogram = nullptr, eyeSlide = nullptr;
    std::array<HWND, controlSliders> sliders{};
    std::array<LPARAM, controlSliders> positions{};   // of the sliders, by UM_LIGHTINTENSITY
    HWND hiddenFocus = nullptr;   // the child that had the focus when the strip was hidden
    ViewToolbar toolbar;
    ValueTip tip;   // of a slider
    ControlsLayout layout;
    int offset = 0;            // how far the strip is scrolled down
    int wheelRest = 0;         // of a wheel with fine steps
    bool sizing = false;       // the scroll bar comes or goes
    bool endingDrag = false;   // what a slider tells meanwhile is no request
};

/// Registers the classes "Controls", "Plan", "EyeSlide" and "Stereogram". Throws Win32Error.
void registerControls(HINSTANCE module);

}   // namespace belvor
