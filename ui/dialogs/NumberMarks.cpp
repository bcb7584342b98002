#include "ui/dialogs/NumberMarks.h"

#include "platform/Utf16.h"
#include "resources/Texts.h"
#include "ui/dialogs/DialogItems.h"
#include "ui/dialogs/NumberText.h"

#include <commctrl.h>

namespace belvor {
namespace {

constexpr COLORREF pale = RGB(255, 208, 208);

void showBalloon(HWND field, const std::string& text)
{
    const std::wstring wide = toWide(text);
    EDITBALLOONTIP tip{};
    tip.cbStruct = sizeof tip;
    tip.pszTitle = L"";
    tip.pszText = wide.c_str();
    SendMessageW(field, EM_SHOWBALLOONTIP, 0, reinterpret_cast<LPARAM>(&tip));
}

}   // namespace

void NumberMarks::check(HWND dialog, int control, const std::string& decimalPoint, const std::string& remark)
{
    HWND const field = GetDlgItem(dialog, control);
    const std::string text = itemText(dialog, control, longestNumber);
    const FieldText kind = kindOfField(text, decimalPoint);
    const bool marks = kind != FieldText::number || !remark.empty();
    if (marks != marked.contains(field)) {
        if (marks) marked.insert(field);
        else marked.erase(field);
        InvalidateRect(field, nullptr, TRUE);
    }
    if (kind == FieldText::other)
        showBalloon(field,
                    filledText(Text::readAs, {shownNumber(typedNumber(text, decimalPoint), decimalPoint)}));
    else if (!remark.empty()) showBalloon(field, remark);
    else SendMessageW(field, EM_HIDEBALLOONTIP, 0, 0);
}

HBRUSH NumberMarks::brush(HDC dc, HWND field) noexcept
{
    if (!marked.contains(field)) return nullptr;
    if (!ground) ground = GdiObject<HBRUSH>(CreateSolidBrush(pale));
    SetBkColor(dc, pale);
    SetTextColor(dc, RGB(0, 0, 0));
    return ground.get();
}

}   // namespace belvor
