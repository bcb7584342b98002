#include "ui/panels/PanelPainting.h"

namespace belvor {
namespace {

/// The class style CS_PARENTDC lets a panel draw outside itself and on its buttons.
void clipToPanel(HDC dc, HWND panel) noexcept
{
    const PixelSize size = clientSize(panel);
    IntersectClipRect(dc, 0, 0, size.width, size.height);
    for (HWND child = GetWindow(panel, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        RECT place;
        if (!IsWindowVisible(child) || !GetWindowRect(child, &place)) continue;
        MapWindowPoints(nullptr, panel, reinterpret_cast<POINT*>(&place), 2);
        ExcludeClipRect(dc, place.left, place.top, place.right, place.bottom);
    }
}

}   // namespace

PixelSize clientSize(HWND window) noexcept
{
    RECT client;
    return GetClientRect(window, &client) ? PixelSize{client.right, client.bottom} : PixelSize{};
}

PanelPaint::PanelPaint(HWND panel) noexcept
    : window(panel),
      size(clientSize(panel)),
      screen(panel),
      memory(screen.get()),
      bitmap(CreateCompatibleBitmap(screen.get(), std::max(size.width, 1), std::max(size.height, 1))),
      selected(memory.get(), bitmap.get())
{}

PanelPaint::~PanelPaint()
{
    if (!selected) return;
    const SavedDC saved(screen.get());
    clipToPanel(screen.get(), window);
    BitBlt(screen.get(), 0, 0, size.width, size.height, memory.get(), 0, 0, SRCCOPY);
}

GhostDC::GhostDC(HWND panel) noexcept : dc(panel), saved(dc.get())
{
    if (!dc) return;
    clipToPanel(dc.get(), panel);
    SetROP2(dc.get(), R2_NOTXORPEN);
}

void DragCapture::take(HWND panel, HCURSOR dragCursor) noexcept
{
    window = panel;
    cursor = dragCursor;
    formerFocus = SetFocus(panel);
    SetCapture(panel);
    SetCursor(cursor);
}

void DragCapture::giveBack() noexcept
{
    HWND const panel = std::exchange(window, nullptr);
    if (!panel) return;
    if (GetCapture() == panel) ReleaseCapture();
    if (GetFocus() == panel) SetFocus(IsWindow(formerFocus) ? formerFocus : GetAncestor(panel, GA_ROOT));
}

bool DragCapture::setCursor() const noexcept
{
    if (!window) return false;
    SetCursor(cursor);
    return true;
}

}   // namespace belvor
