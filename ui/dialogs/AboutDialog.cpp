#include "ui/dialogs/AboutDialog.h"

#include "resources/Texts.h"
#include "resources/ids.h"
#include "ui/dialogs/DialogItems.h"

namespace belvor {
namespace {}   // namespace

void AboutDialog::open(HWND owner) { ModelessDialog::open(owner, ID_ABOUTDIALOG); }

void AboutDialog::initialise()
{
    setItemText(window(), ID_VERSION, textOf(Text::version));
    focusField(window(), IDOK);
}

HBRUSH AboutDialog::background(HDC dc)
{
    SetBkColor(dc, RGB(255, 255, 255));
    SetTextColor(dc, RGB(0, 0, 0));   // legible whatever colours the user has chosen for windows
    return static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
}

}   // namespace belvor
