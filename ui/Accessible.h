#pragma once

#include "platform/win32/Window.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace belvor {

/// A part of a window that has no window of its own, for programs that read the screen aloud.
struct AccessiblePart {
    std::string name, value;   ///< UTF-8.
    RECT area;                 ///< In the client area.
    bool focused = false;      ///< The keys work on it.
};

/// What a window tells such programs; what it does not tell is left to the system.
struct AccessibleFacts {
    std::string name;
    std::string value;          ///< Empty for none.
    std::optional<long> role;   ///< ROLE_SYSTEM_...
    std::vector<AccessiblePart> parts;
};

/// Asked on the window's thread whenever such a program wants to know; the window exists then.
using AccessibleSource = std::function<AccessibleFacts()>;

/// The answer to WM_GETOBJECT; none for a request that is the system's to answer.
std::optional<LRESULT> accessibleObject(HWND window, WPARAM wParam, LPARAM lParam, AccessibleSource source);

/// The window's own text, UTF-8.
std::string titleOf(HWND window);

/// The facts of a window whose class has windowProcedure<State>, from `State::facts`.
template <class State>
AccessibleSource factsOf(HWND window)
{
    return [window]() -> AccessibleFacts {
        const State* const state = stateOf<State>(window);
        return state ? state->facts() : AccessibleFacts{};
    };
}

/// Makes a control of the system answer so, for its life.
void makeAccessible(HWND control, AccessibleSource source);
/// The same with only a name (UTF-8).
void nameAccessible(HWND control, std::string name);

/// Tells such programs that part `index` of the window, or with −1 the window itself, has another value or
/// has come to have the keyboard.
void accessibleValueChanged(HWND window, int index) noexcept;
void accessibleFocusChanged(HWND window, int index) noexcept;

}   // namespace belvor
