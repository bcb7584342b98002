#include "tests/window/Input.h"

#include "tests/window/Program.h"

#include <algorithm>

namespace belvor::window {

namespace {

HWND painted = nullptr;

/// A window is painted only when its thread has nothing else to do; posted messages would overtake the input.
void settle()
{
    if (!painted || !IsWindowVisible(painted)) return;
    const RECT corner{0, 0, 1, 1};
    RedrawWindow(painted, &corner, nullptr, RDW_INVALIDATE);
    eventually([] { return !GetUpdateRect(painted, nullptr, FALSE); }, 5000);
}

void xdotool(const std::string& event, const std::function<bool()>& arrived)
{
    std::wstring line = L"xdotool " + toWide(event);
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION started{};
    if (!CreateProcessW(L"Z:\\usr\\bin\\xdotool", line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                        &start, &started))
        throw Failure("xdotool does not start");
    CloseHandle(started.hThread);
    CloseHandle(started.hProcess);
    await(event, arrived, 5000);
    settle();
}

/// A key or button, known to the two systems by these names.
void change(bool down, const std::string& event, int code)
{
    xdotool(event, [=] { return (GetAsyncKeyState(code) < 0) == down; });
}

std::string keyName(WORD code)
{
    switch (code) {
    case VK_CONTROL: return "ctrl";
    case VK_SHIFT: return "shift";
    case VK_MENU: return "alt";
    case VK_ESCAPE: return "Escape";
    case VK_UP: return "Up";
    case VK_DOWN: return "Down";
    case VK_F1: return "F1";
    case VK_F5: return "F5";
    case VK_F11: return "F11";
    case VK_LEFT: return "Left";
    case VK_RIGHT: return "Right";
    case VK_HOME: return "Home";
    case VK_END: return "End";
    case VK_TAB: return "Tab";
    case VK_SPACE: return "space";
    case VK_RETURN: return "Return";
    default: return std::string(1, static_cast<char>(code | 0x20));   // a letter
    }
}

}   // namespace

void settleBy(HWND window) { painted = window; }

void moveMouse(HWND window, int x, int y)
{
    POINT place{x, y};
    ClientToScreen(window, &place);
    xdotool("mousemove " + std::to_string(place.x) + ' ' + std::to_string(place.y), [=] {
        POINT is;
        return GetCursorPos(&is) && is.x == place.x && is.y == place.y;
    });
}

void pressButton() { change(true, "mousedown 1", VK_LBUTTON); }
void releaseButton() { change(false, "mouseup 1", VK_LBUTTON); }
void rightClick()
{
    change(true, "mousedown 3", VK_RBUTTON);
    change(false, "mouseup 3", VK_RBUTTON);
}

void pressOther(int button)
{
    change(true, "mousedown " + std::to_string(button), button == 2 ? VK_MBUTTON : VK_RBUTTON);
}
void releaseOther(int button)
{
    change(false, "mouseup " + std::to_string(button), button == 2 ? VK_MBUTTON : VK_RBUTTON);
}
void turnWheel(bool away)
{
    xdotool(away ? "click 4" : "click 5", [] { return true; });
    Sleep(200);   // unlike a button, a wheel has no state that tells when the turn has arrived
}

void dragMouse(HWND window, std::initializer_list<POINT> places)
{
    for (const POINT& place : places) {
        moveMouse(window, place.x, place.y);
        if (&place == places.begin()) pressButton();
    }
    releaseButton();
}

void keyDown(WORD code) { change(true, "keydown " + keyName(code), code); }
void keyUp(WORD code) { change(false, "keyup " + keyName(code), code); }

void pressKeys(std::initializer_list<WORD> keys)
{
    std::for_each(keys.begin(), keys.end(), keyDown);
    std::for_each(std::rbegin(keys), std::rend(keys), keyUp);
}

}   // namespace belvor::window
