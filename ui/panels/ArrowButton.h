#pragma once

#include "platform/win32/Handles.h"

namespace belvor {

enum class SystemArrow { right, down, left, up };

/// The system's picture of a scroll arrow.
GdiObject<HBITMAP> systemArrow(SystemArrow arrow) noexcept;

/// A push button that shows a picture, without a size yet; null on failure. `picture` must
/// outlive it.
HWND createArrowButton(HWND parent, const wchar_t* text, int number, HBITMAP picture) noexcept;

}   // namespace belvor
