#pragma once

#include "platform/win32/Windows.h"

#include <string>

namespace belvor {

/// A small text beside the pointer while something is dragged for longer than a moment. Its window belongs to
/// the main window above `panel` and is made when it is first needed.
class ValueTip {
public:
    explicit ValueTip(HWND panel) noexcept : owner(panel) {}
    /// Takes the value; shows the tip, or moves it to where the pointer is now. Without the tip nothing is
    /// lost, so a failure is ignored.
    void show(const std::string& text) noexcept;
    /// Ends the drag.
    void hide() noexcept;

private:
    HWND owner;
    HWND tip = nullptr;
    ULONGLONG began = 0;   // when the first value of this drag came, in milliseconds
    bool dragging = false, shown = false;
};

}   // namespace belvor
