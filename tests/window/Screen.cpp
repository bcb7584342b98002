#include "tests/window/Screen.h"

#include "platform/Files.h"
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
    Picture picture{client.right, client.bottom, {}};
    if (picture.width < 1 || picture.height < 1) return picture;

    const WindowDC screen(nullptr);   // the device context of another program's window cannot be had
    const MemoryDC memory(screen.get());
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = picture.width;
    info.bmiHeader.biHeight = -picture.height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    const GdiObject<HBITMAP> bitmap(CreateDIBSection(screen.get(), &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    const Selection selected(memory.get(), bitmap.get());
    if (!BitBlt(memory.get(), 0, 0, picture.width, picture.height, screen.get(), origin.x, origin.y, SRCCOPY))
        throw Failure("the screen cannot be read");
    GdiFlush();
    const auto* const from = static_cast<const std::uint32_t*>(bits);
    picture.pixels.assign(from, from + picture.width * picture.height);
    for (std::uint32_t& pixel : picture.pixels) pixel &= 0xFFFFFF;
    return picture;
}

Picture readOmbr(const std::string& path)
{
    std::string bytes;
    if (!readWholeFile(path, bytes) || bytes.size() < 8) throw Failure("no image file " + path);
    const auto number = [&](std::size_t at, std::size_t size) {
        std::uint32_t value = 0;
        std::memcpy(&value, bytes.substr(at, size).data(), size);
        return value;
    };
    const std::size_t directory = number(4, 4);
    const auto entry = [&](std::uint32_t tag) -> std::uint32_t {
        for (std::size_t k = 0; k < number(directory, 2); ++k)
            if (number(directory + 2 + 12 * k, 2) == tag) return number(directory + 2 + 12 * k + 8, 4);
        throw Failure("the image file lacks an entry");
    };
    Picture picture{static_cast<int>(entry(256) & 0xFFFF), static_cast<int>(entry(257) & 0xFFFF), {}};
    const std::size_t strips = entry(273);
    for (std::size_t y = 0; y < static_cast<std::size_t>(picture.height); ++y) {
        const std::size_t row = picture.height == 1 ? strips : number(strips + 4 * y, 4);
        for (std::size_t x = 0; x < static_cast<std::size_t>(picture.width); ++x) {
            const std::uint32_t rgb = number(row + 3 * x, 3);
            picture.pixels.push_back((rgb & 0xFF) << 16 | (rgb & 0xFF00) | rgb >> 16);
        }
    }
    return picture;
}

std::string difference(const Picture& a, const Picture& b)
{
    if (a.width != b.width || a.height != b.height)
        return std::to_string(a.width) + 'x' + std::to_string(a.height) + " against " + std::to_string(b.width) + 'x' + std::to_string(b.height);
    const auto first = std::mismatch(a.pixels.begin(), a.pixels.end(), b.pixels.begin());
    if (first.first == a.pixels.end()) return "";
    int count = 0;
    for (std::size_t i = 0; i < a.pixels.size(); ++i) count += a.pixels[i] != b.pixels[i];
    const auto place = static_cast<int>(first.first - a.pixels.begin());
    char text[120];
    std::snprintf(text, sizeof text, "%d pixels differ, first (%d, %d): %06x against %06x", count, place % a.width,
                  place / a.width, static_cast<unsigned>(*first.first), static_cast<unsigned>(*first.second));
    return text;
}

int countOther(const Picture& picture, std::uint32_t colour)
{
    return static_cast<int>(picture.pixels.size()) - static_cast<int>(std::count(picture.pixels.begin(), picture.pixels.end(), colour));
}

}   // namespace belvor::window
