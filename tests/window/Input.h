#pragma once

#include "platform/win32/Windows.h"

#include <initializer_list>

namespace belvor::window {

// The user's hands: events as the devices send them, so that capture, key states and the foreground
// window count. The devices are those of the X server that Wine runs on: events made with SendInput
// would race with what it reports of its own pointer. Each step waits until the program has taken it.

/// The window by whose painting the program is seen to be idle.
void settleBy(HWND window);

void moveMouse(HWND window, int x, int y);   ///< To a place in the client area.
/// `button`: its X number, 2 is the wheel, 3 the right one.
void pressButton(int button = 1);
void releaseButton(int button = 1);
void turnWheel(bool away);   ///< One notch, away from the user or towards.
/// Down at the first place, through the others, up at the last.
void dragMouse(HWND window, std::initializer_list<POINT> places);
void keyDown(WORD key);
void keyUp(WORD key);
/// All keys down in order, then up.
void pressKeys(std::initializer_list<WORD> keys);

}   // namespace belvor::window
