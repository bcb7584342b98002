#pragma once

#include "platform/win32/Windows.h"

namespace belvor {

/// Full screen of the main window: the drawing area has its whole client area, which covers
/// the screen.
class FullScreen {
public:
    explicit FullScreen(HWND mainWindow) noexcept : window(mainWindow) {}

    bool on() const noexcept { return state != State::off; }
    /// Enters full screen, or goes back to the window as it was. Sizes the window before it returns.
    void toggle();
    /// The window was restored by other means.
    void end() noexcept { state = State::off; }
    /// WM_GETMINMAXINFO: the smallest window, and in full screen the largest.
    void limit(MINMAXINFO& limits) const;

private:
    enum class State { off, fromNormal, fromMaximised };

    HWND window;
    State state = State::off;
};

}   // namespace belvor
