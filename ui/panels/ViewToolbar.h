#pragma once

#include "platform/win32/Windows.h"

namespace belvor {

/// The four buttons of the view commands, one below the other. The system's toolbar, taught
/// to answer the keyboard and to pass its tooltips' comings and goings to its parent.
class ViewToolbar {
public:
    /// Creates it in `parent`, greyed. Throws Win32Error. The object must outlive the window.
    void create(HWND parent);
    HWND handle() const noexcept { return window; }
    void enable(bool enabled) const noexcept;

    /// Answers a WM_NOTIFY that asks for the text of a button's tooltip: that of the menu
    /// item with the same command. Other notifications are left alone.
    static void nameButton(HWND mainWindow, LPARAM lParam) noexcept;

private:
    static LRESULT CALLBACK subclass(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                     DWORD_PTR self);
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam);
    bool key(WPARAM key);
    void choose(int button);
    void drawFocus(HRGN painted) const;

    HWND window = nullptr;
    int chosen = 0;   // the button that the keyboard works on
};

}   // namespace belvor
