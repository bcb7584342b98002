#include "errors/Report.h"

#include "errors/BadFile.h"
#include "platform/Utf16.h"
#include "platform/win32/Modal.h"
#include "resources/Texts.h"
#include "resources/ids.h"

#include <commctrl.h>

#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <utility>

namespace belvor {
namespace {

constexpr std::size_t longestStatus = 255;

std::atomic<HWND> reportWindow{nullptr};

std::wstring formatted(const char* format, std::va_list arguments)
{
    char text[1024];
    std::vsnprintf(text, sizeof text, format, arguments);
    return toWide(text).substr(0, longestStatus);
}

void setStatusText(HWND anyWindow, const std::wstring& text)
{
    const HWND statusBar = GetDlgItem(GetAncestor(anyWindow, GA_ROOT), ID_STATUSBAR);
    SendMessageW(statusBar, SB_SETTEXTW, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

}   // namespace

void setReportWindow(HWND mainWindow) noexcept { reportWindow = mainWindow; }

void setStatus(HWND anyWindow, const char* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    const std::wstring text = formatted(format, arguments);
    va_end(arguments);
    setStatusText(anyWindow, text);
}

void warning(const std::string& text)
{
    const HWND owner = reportWindow;
    {
        const Modal modal(owner);
        MessageBoxW(owner, toWide(text).c_str(), toWide(textOf(Text::warningTitle)).c_str(),
                    MB_OK | MB_ICONEXCLAMATION);
    }
    setStatusText(owner, toWide(text).substr(0, longestStatus));
}

void showBadFile(const BadFile& fault) { warning(fault.boxText()); }

void fatal(const char* format, ...)
{
    // The box pumps messages: a failure that comes again with each of them must not pile up boxes.
    static bool shown = false;
    if (!std::exchange(shown, true)) {
        std::va_list arguments;
        va_start(arguments, format);
        const std::wstring text = formatted(format, arguments);
        va_end(arguments);
        MessageBoxW(reportWindow, text.c_str(), toWide(textOf(Text::errorTitle)).c_str(),
                    MB_OK | MB_ICONSTOP | MB_TASKMODAL);
    }
    ExitProcess(1);   // without static destructors: the render thread may still be at work
}

}   // namespace belvor
