#include "ui/dialogs/ModelessDialog.h"

#include "platform/Win32Error.h"
#include "platform/win32/Window.h"
#include "resources/ids.h"
#include "ui/dialogs/DialogItems.h"

namespace belvor {

void noteActivation(HWND dialog, UINT message, WPARAM wParam) noexcept
{
    const bool gone = message == WM_DESTROY || (message == WM_ACTIVATE && LOWORD(wParam) == WA_INACTIVE);
    if (gone && activeDialog == dialog) activeDialog = nullptr;
    if (message == WM_ACTIVATE && !gone) activeDialog = dialog;
}

bool ModelessDialog::open(HWND owner, int resource)
{
    if (dialog) {
        SetActiveWindow(dialog);
        return false;
    }
    const HWND made = CreateDialogParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(resource), owner,
                                         dialogProcedure<ModelessDialog>, reinterpret_cast<LPARAM>(this));
    if (!made) throw Win32Error("CreateDialog");
    return true;
}

void ModelessDialog::close() noexcept
{
    if (dialog) DestroyWindow(dialog);
}

void ModelessDialog::pressed(int control, int notification)
{
    if (control == ID_APPLY || control == IDOK) apply();
    if (control == IDOK || control == IDCANCEL) return close();
    if (notification == EN_ERRSPACE) failOutOfSpace();
    if (control != ID_APPLY) command(control, notification);
}

INT_PTR ModelessDialog::handle(HWND self, UINT message, WPARAM wParam, LPARAM lParam)
{
    noteActivation(self, message, wParam);
    switch (message) {
    case WM_INITDIALOG:
        dialog = self;
        initialise();
        return FALSE;   // initialise() has set the focus
    case WM_COMMAND: pressed(LOWORD(wParam), HIWORD(wParam)); return TRUE;
    case WM_CTLCOLORDLG:
    case WM_CTLCOLORSTATIC: return reinterpret_cast<INT_PTR>(background(reinterpret_cast<HDC>(wParam)));
    case WM_CTLCOLOREDIT:
        return reinterpret_cast<INT_PTR>(
            fieldBackground(reinterpret_cast<HDC>(wParam), reinterpret_cast<HWND>(lParam)));
    case WM_DESTROY:
        dialog = nullptr;
        SetWindowLongPtrW(self, DWLP_USER, 0);   // the object may go before the window's last messages
        return TRUE;
    default: return FALSE;
    }
}

}   // namespace belvor
