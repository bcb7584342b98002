#pragma once

#include "platform/win32/Windows.h"

#include <string>
#include <string_view>

namespace belvor {

// Texts of the controls of a dialog, UTF-8, by control number.

/// At most `most` UTF-16 units of it.
std::string itemText(HWND dialog, int control, int most = 255);
void setItemText(HWND dialog, int control, std::string_view text);

/// Puts the focus on a field with its text selected, as when it is tabbed into.
void focusField(HWND dialog, int control);

/// True for a notification of a plain radio button by which the user chooses it: a click, or
/// the focus that an arrow key moves to it.
bool choosesRadio(int notification) noexcept;

/// What to throw when a field reports that it has no memory left.
[[noreturn]] void failOutOfSpace();

}   // namespace belvor
