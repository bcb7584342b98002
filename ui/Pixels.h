#pragma once

namespace belvor {

/// A pixel of a client area, x right, y down; while the mouse is captured it may lie outside.
struct PixelPoint {
    int x = 0, y = 0;
    friend bool operator==(const PixelPoint&, const PixelPoint&) noexcept = default;
};

struct PixelSize {
    int width = 0, height = 0;
    friend bool operator==(const PixelSize&, const PixelSize&) noexcept = default;
};

/// Right and bottom are outside.
struct PixelRect {
    int left = 0, top = 0, right = 0, bottom = 0;
    friend bool operator==(const PixelRect&, const PixelRect&) noexcept = default;
};

struct PixelLine {
    PixelPoint from, to;
    friend bool operator==(const PixelLine&, const PixelLine&) noexcept = default;
};

}   // namespace belvor
