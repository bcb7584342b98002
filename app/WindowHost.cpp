#include "app/WindowHost.h"

#include "errors/BadFile.h"
#include "errors/Report.h"
#include "platform/Win32Error.h"
#include "render/queue/Progress.h"
#include "resources/ids.h"
#include "scene/Model.h"
#include "ui/Messages.h"

#include <commctrl.h>

namespace belvor {

void WindowHost::progressMade(Progress& progress) { send(window, UM_PROGRESS, progress); }

void WindowHost::progressEnded(const Progress& progress) noexcept
{
    // Part 2 first: the status bar holds the address of `progress` until its text is another.
    const HWND statusBar = GetDlgItem(window, ID_STATUSBAR);
    for (const WPARAM part : {2, 1, 0})
        if (part != 0 || !progress.abandoned())
            SendMessageW(statusBar, SB_SETTEXTW, part, reinterpret_cast<LPARAM>(L""));
    PostMessageW(window, UM_JOBENDED, progress.abandoned(), 0);
}

void WindowHost::modelLoaded(std::uint32_t number, Model* model)
{
    SendMessageW(window, UM_MODELLOADED, number, reinterpret_cast<LPARAM>(model));
}

void WindowHost::imageEnded(std::uint32_t save, bool whole)
{
    send(window, UM_IMAGEENDED, static_cast<INT_PTR>(save), whole);
}

void WindowHost::threadEnded()
{
    if (!PostMessageW(window, UM_THREADENDED, 0, 0)) throw Win32Error("PostMessage");
}

void WindowHost::showBadFile(const BadFile& fault)
{
    belvor::showBadFile(fault);
    SendMessageW(window, UM_FILEREFUSED, reinterpret_cast<WPARAM>(fault.boxText().c_str()), 0);
}

void WindowHost::warning(const std::string& text) { belvor::warning(text); }

}   // namespace belvor
