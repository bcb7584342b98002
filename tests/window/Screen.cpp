#include "tests/window/Screen.h"

#include "imagefile/OmbrReader.h"
#include "platform/win32/Handles.h"
#include "tests/window/Program.h"

#include <algorithm>

namespace belvor::window {

Picture screenOf(HWND window)
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

Picture pictureOf(HBITMAP bitmap, int width, int height)
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

Picture pictureIn(const std::string& ombr)
{
    MemorySource bytes(ombr);
    OmbrReader file(bytes);
    Picture picture{file.header().width, file.header().height, {}};
    for (int row = 0; row < picture.height; ++row) {
        file.readRow(row);
        const auto& rgb = file.rgb();
        for (std::size_t at = 0; at < rgb.size(); at += 3)
            picture.pixels.push_back(
                static_cast<std::uint32_t>(rgb[at] << 16 | rgb[at + 1] << 8 | rgb[at + 2]));
    }
    return picture;
}

std::string difference(const Picture& a, const Picture& b)
{
    if (a == b) return "";
    int count = 0;
    for (std::size_t i = 0; i < std::min(a.pixels.size(), b.pixels.size()); ++i)
        count += a.pixels[i] != b.pixels[i];
    return std::to_string(a.width) + " columns against " + std::to_string(b.width) + ", "
           + std::to_string(count) + " pixels differ";
}

}   // namespace belvor::window
