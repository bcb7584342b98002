#pragma once

#include "platform/win32/Windows.h"

namespace belvor {

// Windows tells the scale of a monitor by functions that older versions lack; there the whole
// desktop has one scale.

namespace dpi {

template <class Function>
Function find(const char* name) noexcept
{
    return reinterpret_cast<Function>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32.dll"), name)));
}

inline int ofDesktop() noexcept
{
    HDC const screen = GetDC(nullptr);
    const int dots = screen ? GetDeviceCaps(screen, LOGPIXELSX) : 0;
    if (screen) ReleaseDC(nullptr, screen);
    return dots > 0 ? dots : 96;
}

}   // namespace dpi

/// Dots an inch of the monitor that the window is on.
inline int dpiOf(HWND window) noexcept
{
    static const auto ask = dpi::find<UINT(WINAPI*)(HWND)>("GetDpiForWindow");
    const UINT dots = ask ? ask(window) : 0;
    return dots > 0 ? static_cast<int>(dots) : dpi::ofDesktop();
}

/// GetSystemMetrics as it is for windows on the monitor of `window`.
inline int metricOf(HWND window, int index) noexcept
{
    static const auto ask = dpi::find<int(WINAPI*)(int, UINT)>("GetSystemMetricsForDpi");
    return ask ? ask(index, static_cast<UINT>(dpiOf(window))) : GetSystemMetrics(index);
}

/// AdjustWindowRectEx for a window on the monitor of `window`.
inline bool adjustWindowRect(HWND window, RECT& area, DWORD style, bool menu, DWORD extended) noexcept
{
    static const auto adjust =
        dpi::find<BOOL(WINAPI*)(RECT*, DWORD, BOOL, DWORD, UINT)>("AdjustWindowRectExForDpi");
    return adjust ? adjust(&area, style, menu, extended, static_cast<UINT>(dpiOf(window)))
                  : AdjustWindowRectEx(&area, style, menu, extended);
}

}   // namespace belvor
