#pragma once

#include "platform/win32/Windows.h"

namespace belvor {

/// The dialog that has the keyboard, null for none; kept by the dialogs, on the interface
/// thread. The message loop offers it every message first.
inline HWND activeDialog = nullptr;

/// For the message loop: true when `message` was keyboard input of the active dialog, which
/// has then been dealt with.
inline bool takenByDialog(MSG& message) noexcept
{
    return activeDialog && IsDialogMessageW(activeDialog, &message);
}

/// Keeps `activeDialog` for a dialog that gets `message`: call it for every one.
void noteActivation(HWND dialog, UINT message, WPARAM wParam) noexcept;

/// A dialog that stays open beside the main window, at most one of its kind. The object
/// belongs to the main window's state and may open its window again and again; the window
/// is closed with the object at the latest.
class ModelessDialog {
public:
    ModelessDialog(const ModelessDialog&) = delete;
    ModelessDialog& operator=(const ModelessDialog&) = delete;

    /// The open window; null when it is closed.
    HWND window() const noexcept { return dialog; }
    void close() noexcept;

    /// Every message of the window from WM_INITDIALOG on, through dialogProcedure.
    INT_PTR handle(HWND self, UINT message, WPARAM wParam, LPARAM lParam);

protected:
    ModelessDialog() = default;
    virtual ~ModelessDialog() { close(); }

    /// Opens the dialog `resource` over `owner`. False, and the open one comes to the front,
    /// when it is open already. Throws Win32Error.
    bool open(HWND owner, int resource);

    /// Fills the controls and sets the focus.
    virtual void initialise() = 0;
    /// A control has something to tell, other than the buttons that apply and close.
    virtual void command(int, int) {}
    /// Apply or OK, also as Enter. OK closes the dialog afterwards, Cancel (Esc) at once.
    virtual void apply() {}
    /// The brush for a dialog's or label's background (WM_CTLCOLORDLG, WM_CTLCOLORSTATIC);
    /// null for the usual one.
    virtual HBRUSH background(HDC) { return nullptr; }
    /// The same for an edit field (WM_CTLCOLOREDIT).
    virtual HBRUSH fieldBackground(HDC, HWND) { return nullptr; }

private:
    void pressed(int control, int notification);

    HWND dialog = nullptr;
};

}   // namespace belvor
