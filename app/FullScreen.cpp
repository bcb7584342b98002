#include "app/FullScreen.h"

#include "ui/WindowScale.h"
#include "view/WindowLayout.h"

#include <utility>

namespace belvor {
namespace {

RECT screenOf(HWND window)
{
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    if (GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTOPRIMARY), &monitor))
        return monitor.rcMonitor;
    return {0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
}

}   // namespace

void FullScreen::toggle()
{
    // The state comes first: ShowWindow lays the window out before it returns.
    const State former = std::exchange(state, on()               ? State::off
                                              : IsZoomed(window) ? State::fromMaximised
                                                                 : State::fromNormal);
    if (former == State::fromNormal) {
        ShowWindow(window, SW_RESTORE);
        return;
    }
    ShowWindow(window, SW_HIDE);   // a maximised window does not take another maximised size
    ShowWindow(window, SW_SHOWMAXIMIZED);
}

void FullScreen::limit(MINMAXINFO& limits) const
{
    const PixelScale scale = scaleOf(window);
    limits.ptMinTrackSize = {scale(smallestWindowWidth), scale(smallestWindowHeight)};
    if (!on()) return;
    const RECT screen = screenOf(window);
    RECT frame = screen;
    adjustWindowRect(window, frame, static_cast<DWORD>(GetWindowLongPtrW(window, GWL_STYLE)), true,
                     static_cast<DWORD>(GetWindowLongPtrW(window, GWL_EXSTYLE)));
    // The place counts from the monitor's corner.
    limits.ptMaxPosition = {frame.left - screen.left, frame.top - screen.top};
    limits.ptMaxSize = {frame.right - frame.left, frame.bottom - frame.top};
    limits.ptMaxTrackSize = limits.ptMaxSize;
}

}   // namespace belvor
