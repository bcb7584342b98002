#pragma once

#include <string>

struct HWND__;

namespace belvor {

class BadFile;

// How the windowed program tells its user something. Texts are UTF-8; all but fatal() may be
// called on either thread, by one that holds no lock.

/// The window over which boxes appear and whose status bar shows the texts; null when it has been destroyed.
void setReportWindow(HWND__* mainWindow) noexcept;

/// Fills `format` as printf does and shows it, cut to 255 characters, in part 0 of the status
/// bar of the top-level window above `anyWindow`.
[[gnu::format(printf, 2, 3)]] void setStatus(HWND__* anyWindow, const char* format, ...);

/// Shows `text` in a box and waits until it is closed; then puts it into the status bar.
void warning(const std::string& text);
/// The same for a fault in a model file, with its place.
void showBadFile(const BadFile& fault);

/// Shows the text in a box and ends the process with exit status 1. Interface thread only.
[[noreturn, gnu::format(printf, 1, 2)]] void fatal(const char* format, ...);

}   // namespace belvor
