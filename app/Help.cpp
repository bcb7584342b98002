#include "app/Help.h"

#include "app/Paths.h"
#include "errors/Report.h"
#include "platform/Win32Error.h"
#include "resources/Texts.h"

#include <shellapi.h>

#include <string>

namespace belvor {
namespace {

std::wstring programFolder()
{
    const std::wstring program = fullPath(programPath());
    return program.substr(0, program.find_last_of(L"\\/") + 1);
}

bool exists(const std::wstring& file) { return GetFileAttributesW(file.c_str()) != INVALID_FILE_ATTRIBUTES; }

bool opened(HWND window, const std::wstring& file)
{
    return exists(file)
           && reinterpret_cast<INT_PTR>(
                  ShellExecuteW(window, L"open", file.c_str(), nullptr, nullptr, SW_SHOWNORMAL))
                  > 32;
}

}   // namespace

void openHelp(HWND window)
{
    const std::wstring folder = programFolder();
    for (const wchar_t* name : {L"Belvor.chm", L"Belvor.html"})
        if (opened(window, folder + name)) return;
    // The viewer of old help files is asked only for a file that is there: for a missing one
    // it keeps the program waiting in a box of its own.
    const std::wstring file = folder + L"Belvor.hlp";
    if (exists(file) && WinHelpW(window, file.c_str(), HELP_FINDER, 0)) return;
    setStatus(window, "%s", textOf(Text::helpNotOpened));
}

}   // namespace belvor
