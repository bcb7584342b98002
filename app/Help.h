#pragma once

#include "platform/win32/Windows.h"

namespace belvor {

/// Opens the help that lies beside the program; says so in the status bar when there is
/// none. Throws Win32Error.
void openHelp(HWND mainWindow);

}   // namespace belvor
