#include "app/MessageLoop.h"

#include "ui/dialogs/ModelessDialog.h"

#include <windowsx.h>

namespace belvor {
namespace {

struct ActiveWindow {
    HWND window = nullptr;
    HACCEL accelerators = nullptr;
} active;

/// The wheel turns what the mouse points at, not what has the keyboard; newer systems do so anyway.
void aimWheel(MSG& message) noexcept
{
    if (message.message != WM_MOUSEWHEEL && message.message != WM_MOUSEHWHEEL) return;
    const POINT pointer{GET_X_LPARAM(message.lParam), GET_Y_LPARAM(message.lParam)};
    HWND const below = WindowFromPoint(pointer);
    if (active.window && IsChild(active.window, below)) message.hwnd = below;
}

}   // namespace

void setActiveWindow(HWND mainWindow, HACCEL accelerators) noexcept { active = {mainWindow, accelerators}; }

int runMessageLoop()
{
    MSG message{};
    while (GetMessageW(&message, nullptr, 0, 0) == 1) {
        aimWheel(message);
        if (takenByDialog(message)) continue;
        if (active.window && active.accelerators
            && TranslateAcceleratorW(active.window, active.accelerators, &message))
            continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return static_cast<int>(message.wParam);
}

}   // namespace belvor
