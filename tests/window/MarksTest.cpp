#include "platform/Utf16.h"
#include "ui/dialogs/NumberMarks.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include <string>

namespace belvor {
namespace {

std::string balloon;   // the text that the field was asked to show

LRESULT CALLBACK noteBalloon(HWND field, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR)
{
    if (message == EM_SHOWBALLOONTIP)
        balloon = toUtf8(reinterpret_cast<const EDITBALLOONTIP*>(lParam)->pszText);
    if (message == EM_HIDEBALLOONTIP) balloon.clear();
    if (message == EM_SHOWBALLOONTIP || message == EM_HIDEBALLOONTIP) return TRUE;
    return DefSubclassProc(field, message, wParam, lParam);
}

}   // namespace

TEST(NumberMarks, AFieldSaysWhatItIsReadAs)
{
    constexpr int number = 7;
    HWND const dialog =
        CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 90, 40, nullptr, nullptr, nullptr, nullptr);
    HWND const field =
        CreateWindowExW(0, L"EDIT", L"", WS_CHILD, 0, 0, 80, 20, dialog,
                        reinterpret_cast<HMENU>(static_cast<INT_PTR>(number)), nullptr, nullptr);
    SetWindowSubclass(field, noteBalloon, 1, 0);
    NumberMarks marks;
    HDC const dc = GetDC(field);
    // Columns: the text, what is said of every number, the balloon, whether the field is marked.
    for (const auto& [text, remark, wanted, marked] : {std::tuple{L"x", "", "This is read as 0", true},
                                                       {L"1,5", "", "", false},
                                                       {L"2.5 m", "", "This is read as 2,5", true},
                                                       {L"-", "", "", true},
                                                       {L"0", "nothing", "nothing", true},
                                                       {L"1", "", "", false}}) {
        SetWindowTextW(field, text);
        marks.check(dialog, number, ",", remark);
        EXPECT_EQ(balloon, wanted) << toUtf8(text);
        EXPECT_EQ(marks.brush(dc, field) != nullptr, marked) << toUtf8(text);
    }
    ReleaseDC(field, dc);
    DestroyWindow(dialog);
}

}   // namespace belvor
