#pragma once

#include "platform/win32/Windows.h"

namespace belvor {

/// Makes the Tab key go round the drawing area and the panels, the toolbar, the sliders and the
/// buttons of a control strip that has all its children, and Enter press a button as Space does.
void makeFocusRing(HWND controls) noexcept;

/// Gives the keyboard to the member of the ring behind the one that has it (before it, with
/// `backwards`), or to the first (last). The main window calls it for the Tab key. Only
/// the drawing area takes it while the strip is hidden or disabled.
void focusNextControl(HWND controls, bool backwards) noexcept;

/// Keeps the focus of a main window's child while another window is active: a dialog, or one of
/// another program. The system gives it to the main window itself when that becomes active again.
class FocusMemory {
public:
    /// WM_ACTIVATE of `mainWindow`, after the system's own treatment of it.
    void activated(HWND mainWindow, bool active) noexcept;

private:
    HWND kept = nullptr;
};

}   // namespace belvor
