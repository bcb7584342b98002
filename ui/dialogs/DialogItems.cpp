#include "ui/dialogs/DialogItems.h"

#include "platform/Utf16.h"
#include "resources/Texts.h"

#include <iterator>
#include <stdexcept>

namespace belvor {

std::string itemText(HWND dialog, int control, int most)
{
    std::wstring text(static_cast<std::size_t>(most) + 1, L'\0');
    text.resize(GetDlgItemTextW(dialog, control, text.data(), most + 1));
    return toUtf8(text);
}

void setItemText(HWND dialog, int control, std::string_view text)
{
    SetDlgItemTextW(dialog, control, toWide(text).c_str());
}

void focusField(HWND dialog, int control)
{
    SendMessageW(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(GetDlgItem(dialog, control)), TRUE);
}

bool choosesRadio(int notification) noexcept
{
    // A mouse button that is down gives the focus too, but chooses only where it is let go.
    return notification == BN_CLICKED || (notification == BN_SETFOCUS && GetKeyState(VK_LBUTTON) >= 0);
}

void failOutOfSpace() { throw std::runtime_error(textOf(Text::outOfMemory)); }

}   // namespace belvor
