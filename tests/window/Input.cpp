#include "tests/window/Input.h"

#include "tests/window/Program.h"

#include <algorithm>
#include <iterator>
#include <sstream>

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
    std::istringstream words(event);
    startProcess("Z:\\usr\\bin\\xdotool", {std::istream_iterator<std::string>(words), {}});
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
    static const std::pair<int, const char*> names[] = {
        {VK_CONTROL, "ctrl"}, {VK_SHIFT, "shift"}, {VK_MENU, "alt"}, {VK_ESCAPE, "Escape"}, {VK_UP, "Up"},
        {VK_DOWN, "Down"},    {VK_TAB, "Tab"},     {VK_F1, "F1"},    {VK_F5, "F5"},         {VK_F11, "F11"}};
    for (const auto& [key, name] : names)
        if (key == code) return name;
    return std::string(1, static_cast<char>(code | 0x20));   // a letter
}

/// A button of the mouse by its X number.
void changeButton(bool down, int button)
{
    constexpr int codes[] = {VK_LBUTTON, VK_MBUTTON, VK_RBUTTON};
    change(down, (down ? "mousedown " : "mouseup ") + std::to_string(button), codes[button - 1]);
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

void pressButton(int button) { changeButton(true, button); }
void releaseButton(int button) { changeButton(false, button); }

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
