#pragma once

#include "platform/win32/Windows.h"
#include "ui/display/DibSection.h"

namespace belvor {

/// Puts the picture on the clipboard, as a bitmap for every program and as PNG. False when the clipboard
/// cannot be had or memory is short.
bool copyToClipboard(HWND owner, DibSection& picture);

}   // namespace belvor
