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

/// The window's place at which its client area covers the screen that it is on.
RECT coverOf(HWND window)
{
    RECT frame = screenOf(window);
    adjustWindowRect(window, frame, static_cast<DWORD>(GetWindowLongPtrW(window, GWL_STYLE)), true,
                     static_cast<DWORD>(GetWindowLongPtrW(window, GWL_EXSTYLE)));
    return frame;
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
    if (!on()) return;
    // On a monitor that is larger than the first one the system adds the difference to a size as large as
    // ours.
    const RECT wanted = coverOf(window);
    RECT frame;
    if (GetWindowRect(window, &frame) && !EqualRect(&frame, &wanted))
        SetWindowPos(window, nullptr, wanted.left, wanted.top, wanted.right - wanted.left,
                     wanted.bottom - wanted.top, SWP_NOZORDER | SWP_NOACTIVATE);
}

void FullScreen::limit(MINMAXINFO& limits) const
{
    const PixelScale scale = scaleOf(window);
    limits.ptMinTrackSize = {scale(smallestWindowWidth), scale(smallestWindowHeight)};
    if (!on()) return;
    const RECT screen = screenOf(window), frame = coverOf(window);
    // The place counts from the monitor's corner.
    limits.ptMaxPosition = {frame.left - screen.left, frame.top - screen.top};
    limits.ptMaxSize = {frame.right - frame.left, frame.bottom - frame.top};
    limits.ptMaxTrackSize = limits.ptMaxSize;
}

}   // namespace belvor
