#pragma once

#include "platform/Handle.h"
#include "platform/win32/Handles.h"

#include <cstdint>

namespace belvor {

/// An off-screen 24-bit bitmap, the top row first, each pixel blue, green, red. Shared by a
/// window, which shows it, and the render that writes its rows: the pixels are read and
/// written without a lock, so a paint may show a row half done.
class DibSection : public TSHandlable {
public:
    /// Black. Without a bitmap when a size is below 1. `like` gives the resolution. Throws
    /// Win32Error when the system cannot make it.
    DibSection(HDC like, int width, int height);

    explicit operator bool() const noexcept { return bitmap.get() != nullptr; }
    int width() const noexcept { return columns; }
    int height() const noexcept { return rows; }

    /// The bytes of a row of an existing bitmap. Nothing drawn by GDI may be pending.
    std::uint8_t* row(int number) noexcept { return bits + std::ptrdiff_t{number} * stride; }

    /// Fills the bitmap; left undone when the system has no device context to spare.
    void fill(HBRUSH brush) noexcept;

    /// Copies rows `first` to `end` − 1 to the same place of `target`. Both threads may do so
    /// at once: the bitmap is not selected into a device context, which only one could do.
    void copyRows(HDC target, int first, int end) const noexcept;

private:
    GdiObject<HBITMAP> bitmap;
    int stride;
    int columns, rows;
    std::uint8_t* bits = nullptr;
};

/// The brush that the class of a window names for its background.
HBRUSH classBrush(HWND window) noexcept;

}   // namespace belvor
