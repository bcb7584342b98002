#include "ui/display/BitmapWindow.h"

#include "platform/Win32Error.h"
#include "platform/win32/Window.h"
#include "resources/ids.h"

namespace belvor {

void BitmapWindow::create(const CREATESTRUCTW& record)
{
    const WindowDC dc(window);
    if (!dc) throw Win32Error("GetDC");
    dib = makeHandle<DibSection>(dc.get(), record.cx, record.cy);
}

bool BitmapWindow::accepted(WPARAM type, LPARAM size) noexcept
{
    return (type == SIZE_RESTORED || type == SIZE_MAXIMIZED) && LOWORD(size) != 0 && HIWORD(size) != 0;
}

void BitmapWindow::resize(int width, int height)
{
    {
        const WindowDC dc(window);
        if (!dc) return;
        dib = makeHandle<DibSection>(dc.get(), width, height);
    }
    dib->fill(classBrush(window));
    SendMessageW(GetParent(window), WM_COMMAND, MAKEWPARAM(ID_REDRAWPANEL, GetDlgCtrlID(window)),
                 reinterpret_cast<LPARAM>(window));
}

void BitmapWindow::copyTo(HDC target) const noexcept
{
    RECT client;
    if (!dib || !*dib || !GetClientRect(window, &client)) return;
    const SavedDC saved(target);
    IntersectClipRect(target, 0, 0, client.right, client.bottom);
    dib->copyRows(target, 0, dib->height());
}

Handle<DibSection> bitmapOf(HWND window) noexcept
{
    const auto* const state = stateOf<BitmapWindow>(window);
    return state ? state->bitmap() : Handle<DibSection>();
}

}   // namespace belvor
