#pragma once

#include "platform/win32/Windows.h"
#include "ui/panels/Pixels.h"

#include <optional>
#include <vector>

namespace belvor {

/// A part of a panel with a tooltip.
struct Tool {
    UINT id;     ///< Of the part, as its notifications carry it.
    UINT text;   ///< Of the string that the tooltip shows.
    PixelRect area;
    friend bool operator==(const Tool&, const Tool&) noexcept = default;
};

/// The tooltip tools of a panel that move with what it paints.
class ToolTips {
public:
    explicit ToolTips(HWND panel) noexcept : window(panel) {}
    /// Registers these tools in place of the former ones with the main window. Does nothing
    /// when they are the same, so it may be called for every WM_PAINT.
    void show(std::vector<Tool> tools);

private:
    HWND window;
    std::vector<Tool> shown;
};

/// Registers a whole child window of `owner`, a button or slider, as a tool with that text.
/// Its notifications go to `owner` and carry the child's handle in place of a number.
void addWindowTool(HWND owner, HWND child, UINT text) noexcept;

/// A notification that a tooltip comes or goes: of a part, or of a child window.
struct ToolTipEvent {
    bool shows = false;
    UINT id = 0;   ///< The part's, or 0 when it is a child window.
    HWND child = nullptr;
};
/// What `lParam` of a WM_NOTIFY says; none when it is about something else.
std::optional<ToolTipEvent> toolTipEvent(LPARAM lParam) noexcept;

/// Has the main window show or clear string `item` in its status line.
void showHelp(HWND panel, UINT item, bool shows) noexcept;

}   // namespace belvor
