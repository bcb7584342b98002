#include "ui/panels/FocusRing.h"

#include "resources/ids.h"
#include "ui/Messages.h"

#include <commctrl.h>

#include <algorithm>
#include <iterator>
#include <vector>

namespace belvor {
namespace {

/// In the order of the Tab key: the picture, then the strip from top left to bottom right.
std::vector<HWND> membersOf(HWND controls)
{
    HWND const slide = GetDlgItem(controls, ID_EYESLIDE), sphere = GetDlgItem(controls, ID_SPHERE);
    std::vector<HWND> members{GetDlgItem(GetParent(controls), ID_DISPLAY), GetDlgItem(controls, ID_TOOLBAR),
                              slide};
    for (const int button : {ID_ADVANCE, ID_RETREAT}) members.push_back(GetDlgItem(slide, button));
    members.insert(members.end(),
                   {GetDlgItem(controls, ID_PLAN), GetDlgItem(controls, ID_ELEVATION), sphere});
    for (const int button : {ID_EYEUP, ID_EYELEFT, ID_EYERIGHT, ID_EYEDOWN})
        members.push_back(GetDlgItem(sphere, button));
    for (int slider = ID_SLIDER; slider <= ID_SLIDERLAST; ++slider)
        members.push_back(GetDlgItem(controls, slider));
    std::erase(members, nullptr);
    return members;
}

bool takesFocus(HWND window) noexcept
{
    for (HWND part = window; part; part = GetAncestor(part, GA_PARENT)) {
        if (part == GetAncestor(window, GA_ROOT)) return true;
        if (!(GetWindowLongPtrW(part, GWL_STYLE) & WS_VISIBLE) || !IsWindowEnabled(part)) return false;
    }
    return false;
}

bool isPushButton(HWND window) noexcept
{
    return (SendMessageW(window, WM_GETDLGCODE, 0, 0) & (DLGC_UNDEFPUSHBUTTON | DLGC_DEFPUSHBUTTON)) != 0;
}

bool isSlider(HWND window) noexcept
{
    const int number = GetDlgCtrlID(window);
    return number >= ID_SLIDER && number <= ID_SLIDERLAST;
}

LRESULT CALLBACK answerTab(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                           DWORD_PTR controls)
{
    if (message == WM_NCDESTROY) RemoveWindowSubclass(window, answerTab, id);
    if (message == WM_KEYDOWN && wParam == VK_TAB) {
        focusNextControl(reinterpret_cast<HWND>(controls), GetKeyState(VK_SHIFT) < 0);
        return 0;
    }
    const bool panelDrags = GetCapture() == window && !isSlider(window);   // it takes the key itself
    if (message == WM_KEYDOWN && wParam == VK_ESCAPE && !panelDrags)
        return SendMessageW(GetAncestor(window, GA_ROOT), message, wParam, lParam);
    if (message == WM_KEYDOWN && wParam == VK_RETURN && isPushButton(window)) {
        SendMessageW(window, BM_CLICK, 0, 0);   // as Space does
        return 0;
    }
    if (message == WM_CHAR && (wParam == L'\t' || wParam == L'\r' || wParam == VK_ESCAPE))
        return 0;   // no beep
    return DefSubclassProc(window, message, wParam, lParam);
}

}   // namespace

void makeFocusRing(HWND controls) noexcept
{
    constexpr UINT_PTR tabSubclass = 2;
    for (HWND const member : membersOf(controls))
        SetWindowSubclass(member, answerTab, tabSubclass, reinterpret_cast<DWORD_PTR>(controls));
}

void focusNextControl(HWND controls, bool backwards) noexcept
{
    std::vector<HWND> members = membersOf(controls);
    std::erase_if(members, [](HWND member) { return !takesFocus(member); });
    if (members.empty()) return;
    if (backwards) std::reverse(members.begin(), members.end());
    const auto current = std::find(members.begin(), members.end(), GetFocus());
    const auto next = current == members.end() || std::next(current) == members.end() ? members.begin()
                                                                                      : std::next(current);
    SendMessageW(*next, WM_CHANGEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEFOCUS),
                 0);   // the keyboard's place is to be seen
    SetFocus(*next);
    send(controls, UM_REVEAL, reinterpret_cast<INT_PTR>(*next));
}

void FocusMemory::activated(HWND mainWindow, bool active) noexcept
{
    HWND const focus = GetFocus();
    if (!active) {
        kept = IsChild(mainWindow, focus) ? focus : nullptr;
    } else if (kept && focus == mainWindow && IsWindowVisible(kept) && IsWindowEnabled(kept)) {
        SetFocus(kept);
    }
}

}   // namespace belvor
