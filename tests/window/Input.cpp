#include "tests/window/Input.h"

#include "tests/window/Program.h"

#include <cstdlib>
#include <string>
#include <vector>

namespace belvor::window {

namespace {

constexpr const wchar_t* xdotool = L"Z:\\usr\\bin\\xdotool";
constexpr int patience = 5000;   // milliseconds

HWND painted = nullptr;

/// Under Wine the devices are those of the X server: events made here would race with what it
/// reports of its own pointer.
bool underX()
{
    static const bool there = std::getenv("DISPLAY") && GetFileAttributesW(xdotool) != INVALID_FILE_ATTRIBUTES;
    return there;
}

void runXdotool(const std::string& arguments)
{
    std::wstring line = L"xdotool " + std::wstring(arguments.begin(), arguments.end());
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION started{};
    if (!CreateProcessW(xdotool, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &started)) throw Failure("xdotool does not start");
    CloseHandle(started.hThread);
    CloseHandle(started.hProcess);
}

/// Waits until the program has taken the event: a window is painted only when its thread has
/// nothing else to do, and posted messages would overtake the input otherwise.
void settle()
{
    if (!painted || !IsWindowVisible(painted)) return;
    const RECT corner{0, 0, 1, 1};
    RedrawWindow(painted, &corner, nullptr, RDW_INVALIDATE);
    eventually([] { return !GetUpdateRect(painted, nullptr, FALSE); }, patience);
}

void sendInput(INPUT input, const std::string& asXdotool, const std::function<bool()>& arrived)
{
    if (underX()) runXdotool(asXdotool);
    else SendInput(1, &input, sizeof input);
    await(asXdotool.c_str(), arrived, patience);
    settle();
}

void mouse(DWORD flags, const char* asXdotool, int key, bool down)
{
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flags;
    sendInput(input, asXdotool, [&] { return (GetAsyncKeyState(key) < 0) == down; });
}

std::string keyName(WORD code)
{
    switch (code) {
    case VK_CONTROL: return "ctrl";
    case VK_SHIFT:   return "shift";
    case VK_MENU:    return "alt";
    case VK_ESCAPE:  return "Escape";
    case VK_UP:      return "Up";
    case VK_DOWN:    return "Down";
    case VK_TAB:     return "Tab";
    case VK_RETURN:  return "Return";
    case VK_RIGHT:   return "Right";
    case VK_LEFT:    return "Left";
    default:         return std::string(1, static_cast<char>(code | 0x20));   // a letter
    }
}

void key(WORD code, bool down)
{
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = code;
    input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(code, MAPVK_VK_TO_VSC));
    input.ki.dwFlags = down ? 0 : KEYEVENTF_KEYUP;
    sendInput(input, (down ? "keydown " : "keyup ") + keyName(code), [&] { return (GetAsyncKeyState(code) < 0) == down; });
}

}   // namespace

void settleBy(HWND window) { painted = window; }

void moveMouse(HWND window, int x, int y)
{
    POINT place{x, y};
    ClientToScreen(window, &place);
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE;
    // The upper end of a pixel's share of the 65536 steps, so that no rounding leads to its neighbour.
    const auto step = [](LONG pixel, int screen) { return (pixel * 65536 + 65535) / screen; };
    input.mi.dx = static_cast<LONG>(step(place.x, GetSystemMetrics(SM_CXSCREEN)));
    input.mi.dy = static_cast<LONG>(step(place.y, GetSystemMetrics(SM_CYSCREEN)));
    sendInput(input, "mousemove " + std::to_string(place.x) + ' ' + std::to_string(place.y), [&] {
        POINT is;
        return GetCursorPos(&is) && is.x == place.x && is.y == place.y;
    });
}

void pressButton() { mouse(MOUSEEVENTF_LEFTDOWN, "mousedown 1", VK_LBUTTON, true); }
void releaseButton() { mouse(MOUSEEVENTF_LEFTUP, "mouseup 1", VK_LBUTTON, false); }
void rightClick()
{
    mouse(MOUSEEVENTF_RIGHTDOWN, "mousedown 3", VK_RBUTTON, true);
    mouse(MOUSEEVENTF_RIGHTUP, "mouseup 3", VK_RBUTTON, false);
}

void dragMouse(HWND window, std::initializer_list<POINT> places)
{
    bool down = false;
    for (const POINT& place : places) {
        moveMouse(window, place.x, place.y);
        if (!down) pressButton();
        down = true;
    }
    releaseButton();
}

void keyDown(WORD code) { key(code, true); }
void keyUp(WORD code) { key(code, false); }

void pressKeys(std::initializer_list<WORD> keys)
{
    for (const WORD code : keys) keyDown(code);
    const std::vector<WORD> pressed(keys);
    for (auto code = pressed.rbegin(); code != pressed.rend(); ++code) keyUp(*code);
}

}   // namespace belvor::window
