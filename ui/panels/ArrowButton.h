#pragma once

#include "platform/win32/Handles.h"

namespace belvor {

enum class SystemArrow { right, down, left, up };

/// A push button of a panel that shows the system's picture of a scroll arrow.
class ArrowButton {
public:
    /// Makes it, without a size yet, with a tooltip of that text; false on failure.
    bool create(HWND panel, SystemArrow arrow, const wchar_t* name, int number, UINT toolTipText) noexcept;
    HWND handle() const noexcept { return window; }

private:
    GdiObject<HBITMAP> picture;   // the button does not own it
    HWND window = nullptr;
};

}   // namespace belvor
