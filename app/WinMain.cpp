#include "app/MainWindow.h"
#include "app/MessageLoop.h"
#include "errors/Report.h"
#include "platform/Win32Error.h"
#include "platform/win32/Window.h"
#include "ui/display/Display.h"
#include "ui/panels/Controls.h"

#include <commctrl.h>
#include <shellapi.h>

#include <clocale>
#include <cstdlib>
#include <ctime>

namespace belvor {
namespace {

/// The first argument of the command line; empty without one.
std::wstring fileArgument()
{
    int count = 0;
    LPWSTR* const arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    const std::wstring file = arguments && count > 1 ? arguments[1] : L"";
    LocalFree(arguments);
    return file;
}

HWND createMainWindow(HINSTANCE module)
{
    const HWND window =
        CreateWindowExW(0, L"Belvor", L"Belvor", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, CW_USEDEFAULT,
                        CW_USEDEFAULT, 800, 600, nullptr, nullptr, module, nullptr);
    if (!window) throw Win32Error("CreateWindow Belvor");
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
        stateOf<MainWindow>(window)->loading().openFile(file);
    return runMessageLoop();
}

void endProgram(const char* text) { fatal("%s", text); }

}   // namespace
}   // namespace belvor

int WINAPI WinMain(HINSTANCE module, HINSTANCE, LPSTR, int showCommand)
try {
    belvor::failureHandler = belvor::endProgram;
    return belvor::run(module, showCommand);
} catch (const std::exception& failure) {
    belvor::fatal("%s", failure.what());
}
