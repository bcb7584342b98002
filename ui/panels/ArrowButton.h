#pragma once

#include "platform/win32/Handles.h"
#include "view/PixelScale.h"

namespace belvor {

enum class SystemArrow { right, down, left, up };

/// A push button of a panel that shows a scroll arrow: the system's own picture, which has one
/// size, at 96 dots an inch, and one of ours in a fitting size at other scales.
class ArrowButton {
public:
    /// Makes it, without a size yet, with a tooltip of that text; false on failure.
    bool create(HWND panel, SystemArrow arrow, const wchar_t* name, int number, UINT toolTipText) noexcept;
    HWND handle() const noexcept { return window; }
    /// Takes the picture for the scale of the monitor that the button is on.
    void scale() noexcept;

private:
    SystemArrow arrow = SystemArrow::right;
    PixelScale shown{0};
    GdiObject<HBITMAP> picture;   // the button does not own it
    HWND window = nullptr;
};

}   // namespace belvor
