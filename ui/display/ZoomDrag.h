#pragma once

#include "ui/Pixels.h"

namespace belvor {

/// The rectangle about the centre of the client area that has its proportions and reaches
/// to `anchor`. Empty for a client area without size.
PixelRect zoomRectangle(PixelPoint anchor, PixelSize client) noexcept;

/// What the zoom value is multiplied by when the rectangle reaches to `release`: 0 at the
/// centre, 1 at the edge, more outside. 1 for a client area without size.
double zoomFactor(PixelPoint release, PixelSize client) noexcept;

/// A press of the left button on the drawing area and what becomes of it: a click on one
/// point, or a rectangle that is dragged out for a closer view.
class ZoomDrag {
public:
    enum class Outcome { none, click, zoom };

    /// `tolerance`: how far, in pixels, the pointer may stray and still click, inclusive.
    explicit ZoomDrag(PixelSize tolerance) noexcept : stray(tolerance) {}

    void press(PixelPoint at) noexcept;
    /// True when the rectangle to show is now the one that reaches to anchor().
    bool move(PixelPoint to) noexcept;
    /// What to ask for; the press and its anchor are over. `at` counts for a zoom,
    /// the press for a click.
    Outcome release(PixelPoint at) noexcept;
    void cancel() noexcept;

    bool idle() const noexcept { return state == State::idle; }
    /// Where the press was, or the drag is now; (−1, −1) when idle.
    PixelPoint anchor() const noexcept { return anchorPixel; }

private:
    enum class State { idle, pressed, dragging };
    bool strayed(PixelPoint to) const noexcept;

    PixelSize stray;
    State state = State::idle;
    PixelPoint anchorPixel{-1, -1};
};

}   // namespace belvor
