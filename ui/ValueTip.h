#pragma once

#include "platform/win32/Windows.h"

#include <string>

namespace belvor {

/// A small text beside the pointer while something is dragged. Its window belongs to the main window
/// above `panel` and is made when it is first needed.
class ValueTip {
public:
    explicit ValueTip(HWND panel) noexcept : owner(panel) {}
    /// Shows it, or moves it to where the pointer is now. Without the tip nothing is lost, so a
    /// failure is ignored.
    void show(const std::string& text) noexcept;
    void hide() noexcept;

private:
    HWND owner;
    HWND tip = nullptr;
};

}   // namespace belvor
