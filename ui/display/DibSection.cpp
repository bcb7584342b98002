#include "ui/display/DibSection.h"

#include "platform/Win32Error.h"
#include "ui/display/DibLayout.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace belvor {

namespace {

/// A description of `height` rows, the top row first.
BITMAPINFO description(int width, int height) noexcept
{
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 24;
    info.bmiHeader.biCompression = BI_RGB;
    return info;
}

}   // namespace

DibSection::DibSection(HDC like, int width, int height)
    : stride(dibStride(width)),
      columns(width),
      rows(height)
{
    if (width < 1 || height < 1) return;
    BITMAPINFO info = description(width, height);
    info.bmiHeader.biXPelsPerMeter = pixelsPerMetre(GetDeviceCaps(like, LOGPIXELSX));
    info.bmiHeader.biYPelsPerMeter = pixelsPerMetre(GetDeviceCaps(like, LOGPIXELSY));
    void* memory = nullptr;
    bitmap = GdiObject<HBITMAP>(CreateDIBSection(like, &info, DIB_RGB_COLORS, &memory, nullptr, 0));
    if (!bitmap) throw Win32Error("CreateDibSection");
    bits = static_cast<std::uint8_t*>(memory);
    std::memset(bits, 0, static_cast<std::size_t>(stride) * static_cast<std::size_t>(rows));
}

void DibSection::fill(HBRUSH brush) noexcept
{
    if (!bitmap) return;
    const MemoryDC memory(nullptr);
    if (!memory) return;
    const Selection selected(memory.get(), bitmap.get());
    if (!selected) return;
    const RECT all{0, 0, columns, rows};
    FillRect(memory.get(), &all, brush);
    GdiFlush();   // before the rows are written
}

void DibSection::copyRows(HDC target, int first, int end) const noexcept
{
    first = std::max(first, 0);
    end = std::min(end, rows);
    if (!bitmap || first >= end) return;
    const BITMAPINFO info = description(columns, end - first);
    const auto count = static_cast<UINT>(end - first);
    SetDIBitsToDevice(target, 0, first, static_cast<DWORD>(columns), count, 0, 0, 0, count,
                      bits + std::ptrdiff_t{first} * stride, &info, DIB_RGB_COLORS);
}

HBRUSH classBrush(HWND window) noexcept
{
    const ULONG_PTR brush = GetClassLongPtrW(window, GCLP_HBRBACKGROUND);
    if (brush >= 1 && brush <= 100) return GetSysColorBrush(static_cast<int>(brush) - 1);
    return reinterpret_cast<HBRUSH>(brush);
}

}   // namespace belvor
