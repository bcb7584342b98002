#include "platform/Utf16.h"
#include "ui/dialogs/NumberMarks.h"

#include <commctrl.h>
#include <gtest/gtest.h>

namespace belvor {
namespace {

/// Keeps the text of the balloon that the field is asked to show. Wine shows none.
LRESULT CALLBACK noteBalloon(HWND field, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                             DWORD_PTR noted)
{
    std::string& balloon = *reinterpret_cast<std::string*>(noted);
    if (message == EM_SHOWBALLOONTIP)
        balloon = toUtf8(reinterpret_cast<const EDITBALLOONTIP*>(lParam)->pszText);
    if (message == EM_HIDEBALLOONTIP) balloon.clear();
    return DefSubclassProc(field, message, wParam, lParam);
}

}   // namespace

TEST(NumberMarks, AFieldSaysWhatItIsReadAs)
{
    HWND const dialog =
        CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 90, 40, nullptr, nullptr, nullptr, nullptr);
    HWND const field =
        CreateWindowExW(0, L"EDIT", L"", WS_CHILD, 0, 0, 80, 20, dialog, nullptr, nullptr, nullptr);
    std::string balloon;
    SetWindowSubclass(field, noteBalloon, 1, reinterpret_cast<DWORD_PTR>(&balloon));
    NumberMarks marks;
    using Row = std::tuple<const wchar_t*, const char*, const char*>;   // the text, a remark, the balloon
    for (const auto& [text, remark, wanted] :
         {Row{L"x", "", "This is read as 0"}, Row{L"1,5", "", ""}, Row{L"2.5 m", "", "This is read as 2,5"},
          Row{L"-", "", ""}, Row{L"0", "nothing", "nothing"}, Row{L"1", "", ""}}) {
        SetWindowTextW(field, text);
        marks.check(dialog, 0, ",", remark);
        EXPECT_EQ(balloon, wanted) << toUtf8(text);
    }
    DestroyWindow(dialog);
}

}   // namespace belvor
