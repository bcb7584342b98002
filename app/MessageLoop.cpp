#include "app/MessageLoop.h"

#include "ui/dialogs/ModelessDialog.h"

namespace belvor {
namespace {

struct ActiveWindow {
    HWND window = nullptr;
    HACCEL accelerators = nullptr;
} active;

}   // namespace

void setActiveWindow(HWND mainWindow, HACCEL accelerators) noexcept { active = {mainWindow, accelerators}; }

int runMessageLoop()
{
    MSG message{};
    while (GetMessageW(&message, nullptr, 0, 0) == 1) {
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
