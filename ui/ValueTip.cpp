#include "ui/ValueTip.h"

#include "platform/Utf16.h"
#include "ui/Messages.h"

#include <commctrl.h>

namespace belvor {
namespace {

/// Milliseconds from the first value of a drag to the tip: a window that comes and goes with each
/// short drag would hold up the panel.
constexpr ULONGLONG delay = 300;

/// Its notifications go to the main window, which takes none of them for a panel's tool.
TTTOOLINFOW toolOf(HWND owner) noexcept
{
    TTTOOLINFOW tool{};
    tool.cbSize = TTTOOLINFOW_V2_SIZE;
    tool.uFlags = TTF_TRACK | TTF_ABSOLUTE | TTF_TRANSPARENT;
    tool.hwnd = GetAncestor(owner, GA_ROOT);
    return tool;
}

}   // namespace

void ValueTip::show(const std::string& text) noexcept
{
    const ULONGLONG now = GetTickCount64();
    if (!dragging) {
        dragging = true;
        began = now;
    }
    if (now - began < delay) return;
    if (!shown) send(GetAncestor(owner, GA_ROOT), UM_SHOWTIPS, FALSE);   // it would cover this one
    TTTOOLINFOW tool = toolOf(owner);
    std::wstring wide = toWide(text);
    tool.lpszText = wide.data();
    if (!tip) {
        tip = CreateWindowExW(WS_EX_TOPMOST | WS_EX_TRANSPARENT, TOOLTIPS_CLASSW, nullptr,
                              WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP | TTS_NOANIMATE, 0, 0, 0, 0, tool.hwnd,
                              nullptr, GetModuleHandleW(nullptr), nullptr);
        SendMessageW(tip, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    }
    POINT pointer{};
    GetCursorPos(&pointer);
    const int beside = GetSystemMetrics(SM_CXCURSOR) / 2;
    SendMessageW(tip, TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&tool));
    SendMessageW(tip, TTM_TRACKPOSITION, 0, MAKELPARAM(pointer.x + beside, pointer.y + beside));
    SendMessageW(tip, TTM_TRACKACTIVATE, TRUE, reinterpret_cast<LPARAM>(&tool));
    shown = true;
}

void ValueTip::hide() noexcept
{
    dragging = false;
    if (!tip || !shown) return;
    shown = false;
    TTTOOLINFOW tool = toolOf(owner);
    SendMessageW(tip, TTM_TRACKACTIVATE, FALSE, reinterpret_cast<LPARAM>(&tool));
    send(tool.hwnd, UM_SHOWTIPS, TRUE);
}

}   // namespace belvor
