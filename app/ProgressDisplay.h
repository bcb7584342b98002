#pragma once

#include "platform/win32/Windows.h"
#include "render/queue/Progress.h"

#include <map>

namespace belvor {

/// Shows in the status bar how far the render thread is, at most every 100 ms. Interface thread.
class ProgressDisplay {
public:
    ProgressDisplay(HWND mainWindow, HWND statusBar) noexcept : window(mainWindow), bar(statusBar) {}

    /// News of a run: they are shown when the timer set here fires. Throws Win32Error "SetTimer".
    void start(Progress& progress);
    /// Draws the bar into the status bar's owner-drawn part.
    static void draw(const DRAWITEMSTRUCT& item);

private:
    static void CALLBACK timerFired(HWND window, UINT, UINT_PTR id, DWORD);
    void update(UINT_PTR id);
    void show(Progress& progress);

    HWND window, bar;
    // By timer. A timer that was already under way can fire after it was killed, when the
    // progress of that address has gone or is another one's.
    std::map<UINT_PTR, Handle<Progress>> running;
};

}   // namespace belvor
