#include "ui/panels/PanelPainting.h"

namespace belvor {

void clipToPanel(HDC dc, HWND panel) noexcept
{
    const PixelSize size = clientSize(panel);
    IntersectClipRect(dc, 0, 0, size.width, size.height);
    for (HWND child = GetWindow(panel, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        RECT shown;
        if (!IsWindowVisible(child) || !GetWindowRect(child, &shown)) continue;
        MapWindowPoints(nullptr, panel, reinterpret_cast<POINT*>(&shown), 2);
        ExcludeClipRect(dc, shown.left, shown.top, shown.right, shown.bottom);
    }
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

}   // namespace belvor
