#include "tests/window/Screen.h"

#include "platform/win32/Handles.h"
#include "tests/window/Program.h"

#include <algorithm>
#include <cstring>

namespace belvor::window {

Picture screenOf(HWND window)
{
    RECT client;
    GetClientRect(window, &client);
    POINT origin{0, 0};
    ClientToScreen(window, &origin);
    Picture picture{client.right, client.bottom,
                    std::vector<std::uint32_t>(static_cast<std::size_t>(client.right * client.bottom))};
    const WindowDC screen(nullptr);   // the device context of another program's window cannot be had
    const MemoryDC memory(screen.get());
    BITMAPINFO info{};
    info.bmiHeader = {sizeof info.bmiHeader, picture.width, -picture.height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    const GdiObject<HBITMAP> bitmap(CreateCompatibleBitmap(screen.get(), picture.width, picture.height));
    {
        const Selection selected(memory.get(), bitmap.get());
        BitBlt(memory.get(), 0, 0, picture.width, picture.height, screen.get(), origin.x, origin.y, SRCCOPY);
    }
    if (!GetDIBits(memory.get(), bitmap.get(), 0, static_cast<UINT>(picture.height), picture.pixels.data(),
                   &info, DIB_RGB_COLORS))
        throw Failure("the screen cannot be read");
    for (std::uint32_t& pixel : picture.pixels) pixel &= 0xFFFFFF;
    return picture;
}

Picture pictureIn(const std::string& bytes)
{
    const auto number = [&](std::size_t at, std::size_t size) {
        std::uint32_t value = 0;
        std::memcpy(&value, bytes.substr(at, size).data(), size);
        return value;
    };
    const std::size_t directory = number(4, 4);
    const auto entry = [&](std::uint32_t tag) {
        std::size_t at = directory + 2;
        while (number(at, 2) != tag) at += 12;
        return number(at + 8, 4);
    };
    Picture picture{static_cast<int>(entry(256) & 0xFFFF), static_cast<int>(entry(257) & 0xFFFF), {}};
    const std::size_t strips = entry(273);
    for (std::size_t y = 0; y < static_cast<std::size_t>(picture.height); ++y)
        for (std::size_t x = 0; x < static_cast<std::size_t>(picture.width); ++x) {
            const std::uint32_t rgb = number(number(strips + 4 * y, 4) + 3 * x, 3);
            picture.pixels.push_back((rgb & 0xFF) << 16 | (rgb & 0xFF00) | rgb >> 16);
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

int countOther(const Picture& picture, std::uint32_t colour)
{
    return static_cast<int>(picture.pixels.size())
           - static_cast<int>(std::count(picture.pixels.begin(), picture.pixels.end(), colour));
}

}   // namespace belvor::window
