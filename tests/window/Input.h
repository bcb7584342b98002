#pragma once

#include "tests/window/Program.h"

#include <algorithm>
#include <iterator>
#include <sstream>

namespace belvor::window {

// The user's hands: events as the devices send them, so that capture, key states and the foreground
// window count. The devices are those of the X server that Wine runs on: events made with SendInput
// would race with what it reports of its own pointer. Each step waits until the program has taken it.

/// The window by whose painting the program is seen to be idle: a window is painted only when its thread has
/// nothing else to do; posted messages would overtake the input.
inline HWND idleWhenPainted = nullptr;

inline void xdotool(const std::string& event, const std::function<bool()>& arrived)
{
    std::istringstream words(event);
    startProcess("Z:\\usr\\bin\\xdotool", {std::istream_iterator<std::string>(words), {}});
    await(event, arrived, 5000);
    if (!idleWhenPainted || !IsWindowVisible(idleWhenPainted)) return;
    const RECT corner{0, 0, 1, 1};
    RedrawWindow(idleWhenPainted, &corner, nullptr, RDW_INVALIDATE);
    eventually([] { return !GetUpdateRect(idleWhenPainted, nullptr, FALSE); }, 5000);
}

/// A key or button goes down or up; the two systems know it by these names.
inline void change(bool down, const std::string& event, int code)
{
    xdotool(event, [=] { return (GetAsyncKeyState(code) < 0) == down; });
}

/// To a place in the client area.
inline void moveMouse(HWND window, int x, int y)
{
    POINT place{x, y};
    ClientToScreen(window, &place);
    xdotool("mousemove " + std::to_string(place.x) + ' ' + std::to_string(place.y), [=] {
        POINT is;
        return GetCursorPos(&is) && is.x == place.x && is.y == place.y;
    });
}

/// `button`: its X number, 2 is the wheel, 3 the right one.
inline void pressButton(int button = 1, bool down = true)
{
    constexpr int codes[] = {VK_LBUTTON, VK_MBUTTON, VK_RBUTTON};
    change(down, (down ? "mousedown " : "mouseup ") + std::to_string(button), codes[button - 1]);
}
inline void releaseButton(int button = 1) { pressButton(button, false); }

/// One notch, away from the user or towards.
inline void turnWheel(bool away)
{
    xdotool(away ? "click 4" : "click 5", [] { return true; });
    Sleep(200);   // unlike a button, a wheel has no state that tells when the turn has arrived
}

/// Down at the first place, through the others, up at the last after that many milliseconds.
inline void dragMouse(HWND window, std::initializer_list<POINT> places, int button = 1, DWORD held = 0)
{
    for (const POINT& place : places) {
        moveMouse(window, place.x, place.y);
        if (&place == places.begin()) pressButton(button);
    }
    Sleep(held);
    releaseButton(button);
}

inline void keyDown(WORD code, bool down = true)
{
    static const std::pair<int, const char*> names[] = {
        {VK_CONTROL, "ctrl"}, {VK_SHIFT, "shift"}, {VK_MENU, "alt"}, {VK_ESCAPE, "Escape"}, {VK_UP, "Up"},
        {VK_DOWN, "Down"},    {VK_TAB, "Tab"},     {VK_F1, "F1"},    {VK_F5, "F5"},         {VK_F11, "F11"}};
    std::string name(1, static_cast<char>(code | 0x20));   // of a letter
    for (const auto& [key, other] : names)
        if (key == code) name = other;
    change(down, (down ? "keydown " : "keyup ") + name, code);
}
inline void keyUp(WORD code) { keyDown(code, false); }

/// All keys down in order, then up.
inline void pressKeys(std::initializer_list<WORD> keys)
{
    for (const WORD key : keys) keyDown(key);
    std::for_each(std::rbegin(keys), std::rend(keys), keyUp);
}

}   // namespace belvor::window
