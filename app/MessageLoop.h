#pragma once

#include "platform/win32/Windows.h"

namespace belvor {

/// Names the active main window, whose accelerators count; null for none.
void setActiveWindow(HWND mainWindow, HACCEL accelerators) noexcept;

/// Serves messages until the program is to end; returns its exit status.
int runMessageLoop();

}   // namespace belvor
