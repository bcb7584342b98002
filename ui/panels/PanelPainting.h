#pragma once

#include "platform/win32/Handles.h"
#include "ui/panels/Pixels.h"

#include <optional>
#include <utility>

namespace belvor {

PixelSize clientSize(HWND window) noexcept;

/// WM_PAINT of a panel: everything is drawn into a bitmap in memory and put on the screen in
/// one copy at the end of the scope, so nothing flickers and the panel needs no erasing.
class PanelPaint {
public:
    explicit PanelPaint(HWND panel) noexcept;
    PanelPaint(const PanelPaint&) = delete;
    PanelPaint& operator=(const PanelPaint&) = delete;
    ~PanelPaint();

    /// Null when nothing can be drawn.
    HDC get() const noexcept { return selected ? memory.get() : screen.get(); }

private:
    HWND window;
    PixelSize size;
    PaintDC screen;
    MemoryDC memory;
    GdiObject<HBITMAP> bitmap;
    Selection selected;
};

/// A device context in which a ghost is drawn and, by drawing the same again, taken away. It
/// stays within the panel and off its buttons, which paint themselves.
class GhostDC {
public:
    explicit GhostDC(HWND panel) noexcept;
    HDC get() const noexcept { return dc.get(); }
    explicit operator bool() const noexcept { return static_cast<bool>(dc); }

private:
    WindowDC dc;
    SavedDC saved;
};

/// What follows the mouse over a panel during a drag: a Shape, which has `void draw(HDC) const`.
template <class Shape>
class Ghost {
public:
    explicit Ghost(HWND panel) noexcept : window(panel) {}

    /// Takes the one on the screen away as it was drawn and draws the new one.
    void show(std::optional<Shape> next)
    {
        const auto former = std::exchange(shown, next);
        const GhostDC dc(window);
        if (!dc) return;
        if (former) former->draw(dc.get());
        if (next) next->draw(dc.get());
    }
    /// For WM_PAINT: stands on what is painted.
    void paint(HDC dc) const
    {
        if (!shown) return;
        const SavedDC saved(dc);
        SetROP2(dc, R2_NOTXORPEN);
        shown->draw(dc);
    }
    const std::optional<Shape>& onScreen() const noexcept { return shown; }

private:
    HWND window;
    std::optional<Shape> shown;
};

/// Mouse and keys during a drag: the panel has the capture and, so that Ctrl and Esc reach
/// it, the focus, which goes back at the end.
class DragCapture {
public:
    void take(HWND panel, HCURSOR dragCursor) noexcept;
    void giveBack() noexcept;
    /// WM_SETCURSOR: true when the drag's cursor has been set.
    bool setCursor() const noexcept;

private:
    HWND window = nullptr, formerFocus = nullptr;
    HCURSOR cursor = nullptr;
};

/// Messages that end a drag without a request: Esc, or the mouse is no longer the panel's, since a
/// box or another program has come up.
inline bool endsDrag(UINT message, WPARAM wParam) noexcept
{
    return message == WM_KILLFOCUS || message == WM_CAPTURECHANGED
           || (message == WM_KEYDOWN && wParam == VK_ESCAPE);
}

}   // namespace belvor
