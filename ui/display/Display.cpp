#include "ui/display/Display.h"

#include "platform/Win32Error.h"
#include "platform/win32/Window.h"
#include "resources/Texts.h"
#include "resources/ids.h"
#include "ui/Accessible.h"
#include "ui/ClientSize.h"
#include "ui/Messages.h"
#include "ui/UserLocale.h"
#include "ui/ValueText.h"

#include <windowsx.h>

#include <oleacc.h>

#include <utility>

namespace belvor {

namespace {

constexpr UINT_PTR focusTimer = 1;

/// How far the pointer may stray from a press and still click.
PixelSize clickTolerance() noexcept { return {GetSystemMetrics(SM_CXDRAG), GetSystemMetrics(SM_CYDRAG)}; }

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
      zoomDrag(clickTolerance()),
      gestures(clickTolerance()),
      tip(owner)
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
    case WM_LBUTTONDOWN: press(point); return 0;
    case WM_RBUTTONDOWN: pressOther(point, ViewGesture::Kind::turn); return 0;
    case WM_MBUTTONDOWN: pressOther(point, ViewGesture::Kind::pan); return 0;
    case WM_RBUTTONUP:
    case WM_MBUTTONUP:
        if (!gestures.idle()) cancel();
        return 0;
    case WM_MOUSEWHEEL: wheel(wParam, false); return 0;
    case WM_MOUSEHWHEEL: wheel(wParam, true); return TRUE;
    case WM_MOUSEMOVE:
        // The release of the button may have gone to another window.
        if (!gestures.idle() && (wParam & (MK_RBUTTON | MK_MBUTTON)) == 0) cancel();
        drag(point);
        return 0;
    case WM_LBUTTONUP: release(point); return 0;
    case WM_KEYDOWN:
        if (pressKey(wParam)) return 0;
        break;
    case WM_KEYUP: gestures.releaseKey(); break;
    case WM_SETFOCUS:
    case WM_KILLFOCUS: showFocus(message == WM_SETFOCUS); break;
    case WM_TIMER: repaintEdge(); return 0;
    case WM_GETOBJECT:
        if (const auto answer = accessibleObject(window, wParam, lParam, [] {
                return AccessibleFacts{textOf(Text::noPictureName), {}, ROLE_SYSTEM_GRAPHIC, {}};
            }))
            return *answer;
        break;
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
    if (GetFocus() != window) return;
    const PixelSize client = clientSize(window);
    const RECT all{0, 0, client.width, client.height};
    SetBkColor(dc.get(), RGB(255, 255, 255));
    SetTextColor(dc.get(), RGB(0, 0, 0));
    DrawFocusRect(dc.get(), &all);
}

/// Every press of a button leaves full screen. True when it did: the point lies elsewhere now.
bool Display::leavesFullScreen()
{
    const PixelSize before = clientSize(window);
    SendMessageW(GetParent(window), WM_COMMAND, ID_LEAVEFULLSCREEN, handleParameter(window));
    return clientSize(window) != before;
}

void Display::press(PixelPoint at)
{
    const bool left = leavesFullScreen();
    cancel();
    if (left) return;
    zoomDrag.press(at);
    SetCapture(window);
}

/// The right or middle button: gives up what is being dragged, or begins a gesture.
void Display::pressOther(PixelPoint at, ViewGesture::Kind kind)
{
    const bool dragging = !zoomDrag.idle() || !gestures.idle();
    const bool left = leavesFullScreen();
    cancel();
    if (left || dragging) return;
    gestures.press(kind, at);
    SetCapture(window);
}

void Display::wheel(WPARAM wParam, bool horizontal)
{
    if (!zoomDrag.idle() || !gestures.idle()) return;
    // Not every system tells of the keys with the message.
    const bool shift = (GET_KEYSTATE_WPARAM(wParam) & MK_SHIFT) != 0 || GetKeyState(VK_SHIFT) < 0;
    const bool fine = (GET_KEYSTATE_WPARAM(wParam) & MK_CONTROL) != 0 || GetKeyState(VK_CONTROL) < 0;
    ask(gestures.wheel(GET_WHEEL_DELTA_WPARAM(wParam), horizontal, shift, fine,
                       static_cast<std::uint32_t>(GetMessageTime())));
}

/// The arrow keys turn the eye as the arrows of the sphere do, with Shift they move the picture; with
/// Ctrl they take steps of eight. Page up and down come closer and go back.
bool Display::pressKey(WPARAM key)
{
    const double step = GetKeyState(VK_CONTROL) < 0 ? 8.0 : 1.0;
    const bool pans = GetKeyState(VK_SHIFT) < 0;
    double right = 0.0, up = 0.0;
    switch (key) {
    case VK_LEFT: right = -step; break;
    case VK_RIGHT: right = step; break;
    case VK_UP: up = step; break;
    case VK_DOWN: up = -step; break;
    case VK_PRIOR: ask(gestures.key(ViewGesture::Kind::zoom, 0.0, 1.0)); return true;
    case VK_NEXT: ask(gestures.key(ViewGesture::Kind::zoom, 0.0, -1.0)); return true;
    default: return false;
    }
    if (pans) ask(gestures.key(ViewGesture::Kind::pan, right, -up));
    else ask(gestures.key(ViewGesture::Kind::turn, -right, up));
    return true;
}

/// A frame at the edge of the picture. The rows of a render overwrite it, so it is renewed.
void Display::showFocus(bool focused)
{
    constexpr UINT milliseconds = 250;
    if (focused) SetTimer(window, focusTimer, milliseconds, nullptr);
    else KillTimer(window, focusTimer);
    InvalidateRect(window, nullptr, FALSE);
}

void Display::repaintEdge()
{
    const PixelSize client = clientSize(window);
    const RECT sides[] = {{0, 0, client.width, 1},
                          {0, client.height - 1, client.width, client.height},
                          {0, 0, 1, client.height},
                          {client.width - 1, 0, client.width, client.height}};
    for (const RECT& side : sides) InvalidateRect(window, &side, FALSE);
}

void Display::ask(const ViewGesture& step) { send(GetParent(window), UM_VIEWGESTURE, step); }

void Display::drag(PixelPoint to)
{
    if (const auto step = gestures.move(to, clientSize(window))) return ask(*step);
    if (!zoomDrag.move(to)) return;
    removeBand();
    showBand();
    tip.show(zoomText(zoomFactor(to, clientSize(window)), userDecimalPoint()));
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
    if (zoomDrag.idle() && gestures.idle()) return;
    zoomDrag.cancel();   // first: releasing the capture comes back here
    gestures.end();
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

/// Copies the picture back over the band instead of redrawing the band: rows that a
/// render has finished meanwhile have lost it already, and a second XOR would bring it back.
void Display::removeBand()
{
    tip.hide();
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
