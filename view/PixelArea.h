#pragma once

namespace belvor {

/// Where a window or a part of one lies, in pixels of its parent's client area.
struct PixelArea {
    int x = 0, y = 0, width = 0, height = 0;
    friend bool operator==(const PixelArea&, const PixelArea&) noexcept = default;
};

}   // namespace belvor
