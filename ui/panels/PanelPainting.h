#pragma once

#include "platform/win32/Handles.h"
#include "ui/ClientSize.h"
#include "ui/panels/Pixels.h"

namespace belvor {

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

/// Keeps drawing in `dc` within the panel and off its buttons, which paint themselves: the class
/// style CS_PARENTDC would let it out.
void clipToPanel(HDC dc, HWND panel) noexcept;

}   // namespace belvor
