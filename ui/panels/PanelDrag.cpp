#include "ui/panels/PanelDrag.h"

#include "ui/Messages.h"
#include "ui/WindowScale.h"
#include "ui/panels/MarkerShapes.h"
#include "ui/panels/PanelPainting.h"

#include <windowsx.h>

#include <algorithm>
#include <utility>

namespace belvor {
namespace {

PanelMouse mouseOf(WPARAM flags, LPARAM lParam) noexcept
{
    return {{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}, (flags & MK_SHIFT) != 0, (flags & MK_CONTROL) != 0};
}

constexpr LPARAM keyWasDown = 1 << 30;

bool endsDrag(UINT message, WPARAM wParam) noexcept
{
    return message == WM_SIZE || message == WM_KILLFOCUS || message == WM_CAPTURECHANGED
           || (message == WM_KEYDOWN && wParam == VK_ESCAPE);
}

}   // namespace

void Ghost::show(Shape next)
{
    const Shape former = std::exchange(shown, std::move(next));
    const WindowDC dc(window);
    if (!dc) return;
    const SavedDC saved(dc.get());
    clipToPanel(dc.get(), window);
    SetROP2(dc.get(), R2_NOTXORPEN);
    if (former) former(dc.get());
    if (shown) shown(dc.get());
}

void Ghost::paint(HDC dc) const
{
    if (!shown) return;
    const SavedDC saved(dc);
    SetROP2(dc, R2_NOTXORPEN);
    shown(dc);
}

PanelDrag::PanelDrag(HWND panel, Markers& panelMarkers, const wchar_t* cursorNumber) noexcept
    : window(panel),
      markers(panelMarkers),
      cursor(LoadCursorW(nullptr, cursorNumber)),
      ghost(panel),
      tip(panel)
{}

std::optional<LRESULT> PanelDrag::handle(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (endsDrag(message, wParam)) cancel();
    switch (message) {
    case WM_LBUTTONDBLCLK:   // the second press of two quick drags
    case WM_LBUTTONDOWN: press(mouseOf(wParam, lParam)); break;
    case WM_MOUSEMOVE: move(mouseOf(wParam, lParam)); break;
    case WM_LBUTTONUP: release(mouseOf(wParam, lParam)); break;
    case WM_KEYDOWN:
        setKey(wParam, true);
        if (!dragging && (lParam & keyWasDown) != 0) join(true);
        if (!dragging && pressKey(wParam)) return 0;
        break;
    case WM_KEYUP:
        setKey(wParam, false);
        join(false);
        break;
    case WM_SETCURSOR:
        if (!dragging) break;
        SetCursor(cursor);
        return TRUE;
    case WM_KILLFOCUS:
    case WM_SETFOCUS:
        join(false);
        InvalidateRect(window, nullptr, TRUE);   // the frame comes and goes
        break;
    }
    return std::nullopt;
}

void PanelDrag::paint(HDC dc) const
{
    ghost.paint(dc);
    if (dragging || GetFocus() != window) return;
    const std::vector<PixelPoint> places = markers.markerPixels();
    const PixelScale scale = scaleOf(window);
    const PixelRect about = around(places[chosenMarker(places.size())], scale);
    const PixelSize client = clientSize(window);
    // A marker outside the panel has its frame at the edge.
    RECT frame{std::clamp(about.left - 2, 1, std::max(1, client.width - scale(24))),
               std::clamp(about.top - 2, 1, std::max(1, client.height - scale(24))), 0, 0};
    frame.right = frame.left + about.right - about.left + 4;
    frame.bottom = frame.top + about.bottom - about.top + 4;
    SetBkColor(dc, RGB(255, 255, 255));
    SetTextColor(dc, RGB(0, 0, 0));
    DrawFocusRect(dc, &frame);
}

/// What a held key asks for is one change of the view.
void PanelDrag::join(bool begin)
{
    if (begin == joined) return;
    joined = begin;
    send(GetAncestor(window, GA_ROOT), UM_JOINCHANGES, begin);
}

/// Space chooses the next marker; the arrow keys move it by a pixel, with Ctrl by eight.
bool PanelDrag::pressKey(WPARAM key)
{
    const std::size_t count = markers.markerPixels().size();
    const int step = GetKeyState(VK_CONTROL) < 0 ? 8 : 1;
    PixelPoint by;
    switch (key) {
    case VK_SPACE:
        chosen = chosenMarker(count) + 1;
        InvalidateRect(window, nullptr, TRUE);
        accessibleFocusChanged(window, static_cast<int>(chosenMarker(count)));
        return true;
    case VK_LEFT: by.x = -step; break;
    case VK_RIGHT: by.x = step; break;
    case VK_UP: by.y = -step; break;
    case VK_DOWN: by.y = step; break;
    default: return false;
    }
    markers.nudge(chosenMarker(count), by, GetKeyState(VK_SHIFT) < 0);
    return true;
}

void PanelDrag::redraw()
{
    if (!dragging) return;
    ghost.show(markers.ghostAt(last));
    tip.show(markers.valueAt(last));
}

void PanelDrag::press(const PanelMouse& mouse)
{
    cancel();
    if (!markers.takeMarker(mouse)) return;
    dragging = true;
    formerFocus = SetFocus(window);
    SetCapture(window);
    SetCursor(cursor);
    move(mouse);
}

void PanelDrag::move(const PanelMouse& mouse)
{
    last = mouse;
    redraw();
}

/// A key changes what the release would ask for, so the ghost follows it without a motion. Comes
/// again and again while the key is held.
void PanelDrag::setKey(WPARAM key, bool held)
{
    if (!dragging || (key != VK_SHIFT && key != VK_CONTROL)) return;
    bool& state = key == VK_SHIFT ? last.shift : last.control;
    if (std::exchange(state, held) != held) redraw();
}

void PanelDrag::release(const PanelMouse& mouse)
{
    if (!dragging) return;
    cancel();
    markers.askFor(mouse);
}

void PanelDrag::cancel()
{
    if (!std::exchange(dragging, false)) return;   // giving back the capture comes here again
    ghost.show({});
    tip.hide();
    if (GetCapture() == window) ReleaseCapture();
    if (GetFocus() == window) SetFocus(IsWindow(formerFocus) ? formerFocus : GetAncestor(window, GA_ROOT));
}

}   // namespace belvor
