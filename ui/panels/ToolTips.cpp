#include "ui/panels/ToolTips.h"

#include "ui/Messages.h"
#include "ui/panels/Markers.h"

#include <commctrl.h>

namespace belvor {
namespace {

HWND mainWindow(HWND panel) noexcept { return GetAncestor(panel, GA_ROOT); }

TTTOOLINFOW record(HWND panel) noexcept
{
    TTTOOLINFOW info{};
    info.cbSize = TTTOOLINFOW_V2_SIZE;   // version 5 of the controls refuses the longer one
    info.uFlags = TTF_SUBCLASS;
    info.hwnd = panel;
    info.hinst = GetModuleHandleW(nullptr);
    return info;
}

void tell(HWND panel, MessageNumber<void> message, const TTTOOLINFOW& info) noexcept
{
    send(mainWindow(panel), message, 0, reinterpret_cast<INT_PTR>(&info));
}

}   // namespace

void ToolTips::show(std::vector<Tool> tools)
{
    if (tools == shown) return;
    // All go before the first comes: a tooltip control stops watching the panel when it
    // loses one tool, and watches it again when it gets one.
    TTTOOLINFOW info = record(window);
    for (const Tool& tool : shown) {
        info.uId = tool.id;
        tell(window, UM_DELTOOL, info);
    }
    shown = std::move(tools);
    for (const Tool& tool : shown) {
        info.uId = tool.id;
        info.lpszText = MAKEINTRESOURCEW(tool.text);
        info.rect = toRect(tool.area);
        tell(window, UM_ADDTOOL, info);
    }
}

void addWindowTool(HWND owner, HWND child, UINT text) noexcept
{
    TTTOOLINFOW info = record(owner);
    info.uFlags |= TTF_IDISHWND;
    info.uId = reinterpret_cast<UINT_PTR>(child);
    info.lpszText = MAKEINTRESOURCEW(text);
    tell(owner, UM_ADDTOOL, info);
}

std::optional<ToolTipEvent> toolTipEvent(LPARAM lParam) noexcept
{
    const auto& header = *reinterpret_cast<const NMHDR*>(lParam);
    if (header.code != TTN_SHOW && header.code != TTN_POP) return std::nullopt;
    ToolTipEvent event;
    event.shows = header.code == TTN_SHOW;
    if (header.idFrom > 0xFFFF)   // no handle is that small, and no number of ours that large
        event.child = reinterpret_cast<HWND>(header.idFrom);
    else event.id = static_cast<UINT>(header.idFrom);
    return event;
}

void showHelp(HWND panel, UINT item, bool shows) noexcept
{
    constexpr UINT hilited = 0x8000, closed = 0xFFFF;
    SendMessageW(mainWindow(panel), WM_MENUSELECT, MAKEWPARAM(item, shows ? hilited : closed), 0);
}

}   // namespace belvor
