#include "ui/display/Display.h"

#include "platform/Win32Error.h"
#include "platform/win32/Window.h"
#include "resources/ids.h"
#include "ui/ClientSize.h"
#include "ui/Messages.h"

#include <windowsx.h>

#include <utility>

namespace belvor {

namespace {

void xorRectangle(HDC dc, const PixelRect& rectangle) noexcept
{
    const SavedDC saved(dc);
    SelectObject(dc, GetStockObject(WHITE_PEN));
    SelectObject(dc, GetStockObject(HOLLOW_BRUSH));
    SetROP2(dc, R2_XORPEN);
    Rectangle(dc, rectangle.left, rectangle.top, rectangle.right, rectangle.bottom);
}

/// Leaves only the outline of the rectangle, one pixel wide, to be drawn on.
void clipToOutline(HDC dc, const PixelRect& rectangle) noexcept
{
    IntersectClipRect(dc, rectangle.left, rectangle.top, rectangle.right, rectangle.bottom);
    ExcludeClipRect(dc, rectangle.left + 1, rectangle.top + 1, rectangle.right - 1, rectangle.bottom - 1);
}

}   // namespace

Display::Display(HWND owner) noexcept
    : BitmapWindow(owner),
      zoomDrag({GetSystemMetrics(SM_CXDRAG), GetSystemMetrics(SM_CYDRAG)})
{}

LRESULT Display::handle(UINT message, WPARAM wParam, LPARAM lParam)
{
    const PixelPoint point{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    switch (message) {
    case WM_CREATE: create(*reinterpret_cast<const CREATESTRUCTW*>(lParam)); return 0;
    case WM_SIZE:
        cancel();
        if (accepted(wParam, lParam)) resize(LOWORD(lParam), HIWORD(lParam));
        return 0;
    case WM_PAINT: paint(); return 0;
    case WM_LBUTTONDOWN: press(point, true); return 0;
    case WM_RBUTTONDOWN:
    case WM_MBUTTONDOWN: press(point, false); return 0;
    case WM_MOUSEMOVE: drag(point); return 0;
    case WM_LBUTTONUP: release(point); return 0;
    case WM_CAPTURECHANGED:
        if (reinterpret_cast<HWND>(lParam) != window) cancel();
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

void Display::paint()
{
    const PaintDC dc(window);
    if (!dc) return;
    copyTo(dc.get());
    if (band) xorRectangle(dc.get(), *band);   // clipped to what has just been painted over
}

void Display::press(PixelPoint at, bool left)
{
    const PixelSize before = clientSize(window);
    SendMessageW(GetParent(window), WM_COMMAND, ID_LEAVEFULLSCREEN, handleParameter(window));
    if (!left) return cancel();
    if (clientSize(window) != before) return;   // full screen is over and the point lies elsewhere now
    cancel();
    zoomDrag.press(at);
    SetCapture(window);
}

void Display::drag(PixelPoint to)
{
    if (!zoomDrag.move(to)) return;
    removeBand();
    showBand();
}

void Display::release(PixelPoint at)
{
    const PixelPoint pressed = zoomDrag.anchor();
    const ZoomDrag::Outcome outcome = zoomDrag.release(at);
    if (outcome == ZoomDrag::Outcome::none) return;
    removeBand();
    ReleaseCapture();
    if (outcome == ZoomDrag::Outcome::click) send(GetParent(window), UM_DISPLAYCLICK, pressed.x, pressed.y);
    else send(GetParent(window), UM_DISPLAYZOOM, zoomFactor(at, clientSize(window)));
}

void Display::cancel()
{
    if (zoomDrag.idle()) return;
    zoomDrag.cancel();   // first: releasing the capture comes back here
    removeBand();
    ReleaseCapture();
}

void Display::showBand()
{
    const WindowDC dc(window);
    const PixelSize client = clientSize(window);
    if (!dc || client.width < 1 || client.height < 1) return;
    band = zoomRectangle(zoomDrag.anchor(), client);
    xorRectangle(dc.get(), *band);
}

/// Copies the picture back over the band instead of drawing the band once more: rows that a
/// render has finished meanwhile have lost it already, and a second XOR would bring it back.
void Display::removeBand()
{
    const auto shown = std::exchange(band, std::nullopt);
    const WindowDC dc(window);
    if (!shown || !dc) return;
    const SavedDC saved(dc.get());
    clipToOutline(dc.get(), *shown);
    copyTo(dc.get());
}

void registerDisplay(HINSTANCE module)
{
    WNDCLASSEXW record = windowClass<Display>(module, L"Display");
    record.style = CS_BYTEALIGNCLIENT | CS_PARENTDC | CS_DBLCLKS;
    record.hbrBackground = static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH));
    if (!RegisterClassExW(&record)) throw Win32Error("RegisterClass Display");
}

}   // namespace belvor
