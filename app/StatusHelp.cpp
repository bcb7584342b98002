#include "app/StatusHelp.h"

#include "platform/Utf16.h"
#include "resources/Texts.h"
#include "resources/ids.h"
#include "session/Commands.h"

#include <commctrl.h>

namespace belvor {
namespace {

std::wstring helpText(HWND mainWindow, const RecentFileList& recent, UINT item, UINT flags, HMENU menu)
{
    if (flags & MF_SYSMENU) return {};
    if (flags & MF_POPUP)
        return menu == GetMenu(mainWindow)
                   ? toWide(textOf(textAfter(Text::fileMenuHelp, static_cast<int>(item))))
                   : L"";
    if (const std::string* const path = recent.pathOf(item)) return toWide(*path);
    const Command* const command = commandOf(static_cast<int>(item));
    return toWide(textOf(command ? command->help : static_cast<Text>(item)));
}

}   // namespace

void showMenuHelp(HWND mainWindow, HWND statusBar, const RecentFileList& recent, WPARAM wParam, LPARAM lParam)
{
    const UINT item = LOWORD(wParam), flags = HIWORD(wParam);
    const HMENU menu = reinterpret_cast<HMENU>(lParam);
    if (flags == 0xFFFF && !menu) return endMenuHelp(statusBar);
    const std::wstring text = helpText(mainWindow, recent, item, flags, menu);
    SendMessageW(statusBar, SB_SIMPLE, TRUE, 0);
    SendMessageW(statusBar, SB_SETTEXTW, SB_SIMPLEID | SBT_NOBORDERS, reinterpret_cast<LPARAM>(text.c_str()));
}

void endMenuHelp(HWND statusBar) { SendMessageW(statusBar, SB_SIMPLE, FALSE, 0); }

}   // namespace belvor
