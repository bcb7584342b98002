#pragma once

#include "app/RecentFileList.h"
#include "platform/win32/Windows.h"

namespace belvor {

/// Explains the chosen menu item in the status bar, which shows that one text meanwhile. The
/// panels have their tools explained by the same message.
void showMenuHelp(HWND mainWindow, HWND statusBar, const RecentFileList& recent, WPARAM wParam,
                  LPARAM lParam);
/// Back to the parts of the status bar.
void endMenuHelp(HWND statusBar);

}   // namespace belvor
