#include "ui/panels/ArrowButton.h"

#include "platform/win32/Handles.h"
#include "platform/win32/Window.h"
#include "resources/Texts.h"
#include "ui/Accessible.h"
#include "ui/Messages.h"
#include "ui/WindowScale.h"
#include "ui/panels/ToolTips.h"

#include <commctrl.h>

#include <algorithm>

namespace belvor {
namespace {

constexpr UINT_PTR repeatTimer = 1;
constexpr UINT firstDelay = 400, nextDelay = 100;   // milliseconds
constexpr LPARAM keyWasDown = 1 << 30;

}   // namespace

bool ArrowButton::create(HWND panel, Arrow direction, const wchar_t* name, int number, UINT toolTipText)
{
    arrow = direction;
    window = CreateWindowExW(0, L"BUTTON", name, WS_CHILD | WS_VISIBLE | BS_OWNERDRAW, 0, 0, 0, 0, panel,
                             reinterpret_cast<HMENU>(static_cast<INT_PTR>(number)), GetModuleHandleW(nullptr),
                             nullptr);
    if (!window) return false;
    SetWindowSubclass(window, subclass, 1, reinterpret_cast<DWORD_PTR>(this));
    addWindowTool(panel, window, toolTipText);
    nameAccessible(window, textOf(static_cast<Text>(toolTipText)));
    return true;
}

std::array<PixelPoint, 3> arrowShape(Arrow arrow, PixelSize button) noexcept
{
    const int across = button.width / 2, down = button.height / 2;
    const int reach = std::min(button.width, button.height) / 4, depth = (reach + 1) / 2;
    switch (arrow) {
    case Arrow::right:
        return {
            {{across - depth, down - reach}, {across - depth, down + reach}, {across - depth + reach, down}}};
    case Arrow::left:
        return {
            {{across + depth, down - reach}, {across + depth, down + reach}, {across + depth - reach, down}}};
    case Arrow::down:
        return {
            {{across - reach, down - depth}, {across + reach, down - depth}, {across, down - depth + reach}}};
    default:
        return {
            {{across - reach, down + depth}, {across + reach, down + depth}, {across, down + depth - reach}}};
    }
}

bool ArrowButton::draw(const DRAWITEMSTRUCT& item) const noexcept
{
    if (item.hwndItem != window) return false;
    const bool pushed = (item.itemState & ODS_SELECTED) != 0;
    RECT area = item.rcItem;
    FillRect(item.hDC, &area, GetSysColorBrush(COLOR_BTNFACE));
    DrawEdge(item.hDC, &area, pushed ? EDGE_SUNKEN : EDGE_RAISED, BF_RECT);
    const PixelSize size{area.right - area.left, area.bottom - area.top};
    const int shift = pushed ? 1 : 0;
    POINT corners[3];
    const auto shape = arrowShape(arrow, size);
    std::transform(shape.begin(), shape.end(), corners, [&](PixelPoint p) {
        return POINT{area.left + p.x + shift, area.top + p.y + shift};
    });
    const COLORREF colour = GetSysColor(item.itemState & ODS_DISABLED ? COLOR_GRAYTEXT : COLOR_BTNTEXT);
    const GdiObject<HPEN> pen(CreatePen(PS_SOLID, 1, colour));
    const GdiObject<HBRUSH> brush(CreateSolidBrush(colour));
    const Selection penInDc(item.hDC, pen.get()), brushInDc(item.hDC, brush.get());
    Polygon(item.hDC, corners, 3);
    if ((item.itemState & ODS_FOCUS) != 0 && (item.itemState & ODS_NOFOCUSRECT) == 0) {
        InflateRect(&area, -3, -3);
        DrawFocusRect(item.hDC, &area);
    }
    return true;
}

LRESULT CALLBACK ArrowButton::subclass(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                       DWORD_PTR self)
{
    if (message == WM_NCDESTROY) {
        RemoveWindowSubclass(window, subclass, id);
        return DefSubclassProc(window, message, wParam, lParam);
    }
    return guarded([&] { return reinterpret_cast<ArrowButton*>(self)->handle(message, wParam, lParam); });
}

LRESULT ArrowButton::handle(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_GETDLGCODE: return DLGC_BUTTON | DLGC_UNDEFPUSHBUTTON;
    case WM_LBUTTONDBLCLK:   // the second of two quick clicks is a click
    case WM_LBUTTONDOWN:
        SetTimer(window, repeatTimer, firstDelay, nullptr);
        return DefSubclassProc(window, WM_LBUTTONDOWN, wParam, lParam);
    case WM_TIMER:
        if (wParam != repeatTimer) break;
        SetTimer(window, repeatTimer, nextDelay, nullptr);
        if (SendMessageW(window, BM_GETSTATE, 0, 0) & BST_PUSHED) repeat();   // the pointer is still on it
        return 0;
    case WM_KEYDOWN:
        if (wParam != VK_SPACE || (lParam & keyWasDown) == 0) break;
        repeat();
        return 0;
    case WM_KEYUP:
    case WM_LBUTTONUP:   // no click more when there have been some
        KillTimer(window, repeatTimer);
        if (repeats && GetCapture() == window) ReleaseCapture();
        endRepeat();
        break;
    case WM_CAPTURECHANGED:
        KillTimer(window, repeatTimer);
        endRepeat();
        break;
    case WM_KILLFOCUS: endRepeat(); break;
    }
    return DefSubclassProc(window, message, wParam, lParam);
}

void ArrowButton::repeat()
{
    HWND const main = GetAncestor(window, GA_ROOT);
    if (!repeats) send(main, UM_JOINCHANGES, TRUE);
    repeats = true;
    SendMessageW(GetParent(window), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(window), BN_CLICKED),
                 reinterpret_cast<LPARAM>(window));
}

void ArrowButton::endRepeat()
{
    if (!repeats) return;
    repeats = false;
    send(GetAncestor(window, GA_ROOT), UM_JOINCHANGES, FALSE);
}

}   // namespace belvor
