#pragma once

#include "platform/win32/Windows.h"

#include <cstdint>
#include <string>
#include <vector>

namespace belvor::window {

/// Pixels as 0xRRGGBB, the top row first.
struct Picture {
    int width = 0, height = 0;
    std::vector<std::uint32_t> pixels;
    std::uint32_t at(int x, int y) const { return pixels.at(static_cast<std::size_t>(y * width + x)); }
    friend bool operator==(const Picture&, const Picture&) = default;
};

/// What the screen shows of a window's client area.
Picture screenOf(HWND window);
/// The pixels of a bitmap of that size that no device context has selected.
Picture pictureOf(HBITMAP bitmap, int width, int height);
/// The colour image in the bytes of an Ombr file.
Picture pictureIn(const std::string& ombr);
/// Empty when the pictures are equal, else how much differs.
std::string difference(const Picture& a, const Picture& b);

}   // namespace belvor::window
