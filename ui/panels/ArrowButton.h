#pragma once

#include "platform/win32/Windows.h"
#include "ui/Pixels.h"

#include <array>

namespace belvor {

enum class Arrow { right, down, left, up };

/// A push button of a panel with an arrow on it, drawn in the panel's style at any scale. While it is held,
/// with the mouse or the Space key, it clicks again and again; those clicks are one change of the view.
class ArrowButton {
public:
    /// Makes it, without a size yet, with a tooltip of that text; false on failure. The object must outlive
    /// the window.
    bool create(HWND panel, Arrow direction, const wchar_t* name, int number, UINT toolTipText);
    HWND handle() const noexcept { return window; }
    /// The panel's WM_DRAWITEM, if it is about this button.
    bool draw(const DRAWITEMSTRUCT& item) const noexcept;

private:
    static LRESULT CALLBACK subclass(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                     DWORD_PTR self);
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam);
    void repeat();
    void endRepeat();

    Arrow arrow = Arrow::right;
    HWND window = nullptr;
    bool repeats = false;   // it has clicked while held
};

/// The corners of an arrow in the middle of a button.
std::array<PixelPoint, 3> arrowShape(Arrow arrow, PixelSize button) noexcept;

}   // namespace belvor
