#pragma once

#include "imagefile/OmbrReader.h"
#include "platform/win32/Handles.h"
#include "tests/window/Program.h"

namespace belvor::window {

/// Pixels as 0xRRGGBB, the top row first.
struct Picture {
    int width = 0, height = 0;
    std::vector<std::uint32_t> pixels;
    std::uint32_t at(int x, int y) const { return pixels.at(static_cast<std::size_t>(y * width + x)); }
    friend bool operator==(const Picture&, const Picture&) = default;
};

/// The pixels of a bitmap of that size that no device context has selected.
inline Picture pictureOf(HBITMAP bitmap, int width, int height)
{
    Picture picture{width, height, std::vector<std::uint32_t>(static_cast<std::size_t>(width * height))};
    BITMAPINFO info{};
    info.bmiHeader = {sizeof info.bmiHeader, width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    if (!GetDIBits(WindowDC(nullptr).get(), bitmap, 0, static_cast<UINT>(height), picture.pixels.data(),
                   &info, DIB_RGB_COLORS))
        throw Failure("the picture cannot be read");
    for (std::uint32_t& pixel : picture.pixels) pixel &= 0xFFFFFF;
    return picture;
}

/// What the screen shows of a window's client area.
inline Picture screenOf(HWND window)
{
    RECT client;
    GetClientRect(window, &client);
    POINT origin{0, 0};
    ClientToScreen(window, &origin);
    const WindowDC screen(nullptr);   // the device context of another program's window cannot be had
    const MemoryDC memory(screen.get());
    const GdiObject<HBITMAP> bitmap(CreateCompatibleBitmap(screen.get(), client.right, client.bottom));
    {
        const Selection selected(memory.get(), bitmap.get());
        BitBlt(memory.get(), 0, 0, client.right, client.bottom, screen.get(), origin.x, origin.y, SRCCOPY);
    }
    return pictureOf(bitmap.get(), client.right, client.bottom);
}

/// The colour image in the bytes of an Ombr file.
inline Picture pictureIn(const std::string& ombr)
{
    MemorySource bytes(ombr);
    OmbrReader file(bytes);
    Picture picture{file.header().width, file.header().height, {}};
    for (int row = 0; row < picture.height; ++row) {
        file.readRow(row);
        for (auto rgb = file.rgb().begin(); rgb != file.rgb().end(); rgb += 3)
            picture.pixels.push_back(static_cast<std::uint32_t>(rgb[0] << 16 | rgb[1] << 8 | rgb[2]));
    }
    return picture;
}

/// Empty when the pictures are equal, else how much differs.
inline std::string difference(const Picture& a, const Picture& b)
{
    if (a == b) return "";
    if (a.pixels.size() != b.pixels.size())
        return std::to_string(a.width) + " columns, not " + std::to_string(b.width);
    int count = 0;
    for (std::size_t i = 0; i < a.pixels.size(); ++i) count += a.pixels[i] != b.pixels[i];
    return std::to_string(count) + " pixels differ";
}

}   // namespace belvor::window
