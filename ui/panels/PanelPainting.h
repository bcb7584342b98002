#pragma once

#include "platform/win32/Handles.h"
#include "ui/panels/Pixels.h"

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

/// Raster mode of a ghost for the length of a scope.
class GhostMode {
public:
    explicit GhostMode(HDC context) noexcept : dc(context), former(SetROP2(context, R2_NOTXORPEN)) {}
    GhostMode(const GhostMode&) = delete;
    GhostMode& operator=(const GhostMode&) = delete;
    ~GhostMode() { SetROP2(dc, former); }

private:
    HDC dc;
    int former;
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

}   // namespace belvor
