#pragma once

#include "platform/win32/Windows.h"
#include "ui/Pixels.h"

namespace belvor {

/// The size of a window's client area; without extent when there is no such window.
inline PixelSize clientSize(HWND window) noexcept
{
    RECT client;
    return GetClientRect(window, &client) ? PixelSize{client.right, client.bottom} : PixelSize{};
}

}   // namespace belvor
