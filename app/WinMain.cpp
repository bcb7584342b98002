#include "app/CrashReport.h"
#include "app/MainWindow.h"
#include "app/MessageLoop.h"
#include "errors/Report.h"
#include "platform/Process.h"
#include "platform/Utf16.h"
#include "platform/Win32Error.h"
#include "platform/win32/Window.h"
#include "resources/Texts.h"
#include "ui/WindowScale.h"
#include "ui/display/Display.h"
#include "ui/panels/Controls.h"

#include <commctrl.h>
#include <objbase.h>
#include <shellapi.h>

#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <ctime>

namespace belvor {
namespace {

constexpr int firstWidth = 800, firstHeight = 600;   // at 96 dots an inch

/// The first argument of the command line; empty without one.
std::wstring fileArgument()
{
    int count = 0;
    LPWSTR* const arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    const std::wstring file = arguments && count > 1 ? arguments[1] : L"";
    LocalFree(arguments);
    return file;
}

/// The size that the window has at 96 dots an inch, in pixels of the monitor that it has come to, as far
/// as there is room.
void scaleWindow(HWND window)
{
    const PixelScale scale = scaleOf(window);
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    if (scale == PixelScale{}
        || !GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTOPRIMARY), &monitor))
        return;
    const RECT& room = monitor.rcWork;
    SetWindowPos(window, nullptr, room.left, room.top,
                 std::min(scale(firstWidth), static_cast<int>(room.right - room.left)),
                 std::min(scale(firstHeight), static_cast<int>(room.bottom - room.top)),
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

HWND createMainWindow(HINSTANCE module)
{
    const HWND window =
        CreateWindowExW(0, L"Belvor", L"Belvor", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, CW_USEDEFAULT,
                        CW_USEDEFAULT, firstWidth, firstHeight, nullptr, nullptr, module, nullptr);
    if (!window) throw Win32Error("CreateWindow Belvor");
    scaleWindow(window);
    return window;
}

int run(HINSTANCE module, int showCommand)
{
    std::srand(static_cast<unsigned>(std::time(nullptr)));
    std::setlocale(LC_ALL, "");
    InitCommonControls();
    registerMainWindow(module);
    registerDisplay(module);
    registerControls(module);
    const HWND window = createMainWindow(module);
    ShowWindow(window, showCommand);
    if (const std::wstring file = fileArgument(); !file.empty())
        stateOf<MainWindow>(window)->session().loading().openFile(toUtf8(file));
    return runMessageLoop();
}

void endProgram(const char* text) { fatal("%s", text); }

}   // namespace
}   // namespace belvor

int WINAPI WinMain(HINSTANCE module, HINSTANCE, LPSTR, int showCommand)
try {
    belvor::useSystemLibrariesOnly();
    belvor::failureHandler = belvor::endProgram;
    belvor::reportCrashes(belvor::textOf(belvor::Text::version));
    CoInitializeEx(nullptr,
                   COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE);   // the shell's own works without
    return belvor::run(module, showCommand);
} catch (const std::exception& failure) {
    belvor::fatal("%s", failure.what());
}
