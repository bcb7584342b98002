#pragma once

#include "platform/win32/Dpi.h"
#include "view/PixelScale.h"

namespace belvor {

/// The scale of the monitor that the window is on.
inline PixelScale scaleOf(HWND window) noexcept { return {dpiOf(window)}; }

}   // namespace belvor
