#pragma once

#include "platform/win32/Windows.h"

namespace belvor {

/// Whether the user's theme is one of high contrast, or has dark windows: then what is drawn in fixed colours
/// needs outlines. Interface thread.
bool highContrast() noexcept;
/// The user's colours or theme may have changed: asks the system anew.
void refreshSystemColours() noexcept;
/// Gives the window a dark title bar when the user's programs are dark, where the system can.
void followDarkMode(HWND window) noexcept;

}   // namespace belvor
