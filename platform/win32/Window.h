#pragma once

#include "platform/win32/Windows.h"

#include <exception>
#include <memory>

namespace belvor {

/// What becomes of an exception that a procedure of a window, dialog or timer has let out.
/// It gets the text for the user and is not expected to return. The program sets it first thing.
using FailureHandler = void (*)(const char* text);
inline FailureHandler failureHandler = nullptr;

/// Shows `text` through the failure handler and ends the process.
[[noreturn]] inline void endAfterFailure(const char* text) noexcept
{
    if (failureHandler) failureHandler(text);
    ExitProcess(1);   // without static destructors: the render thread may still be at work
}

/// Runs `body` and returns its result. No exception may cross the system's frames (through a
/// message that another thread sent it would vanish), so any that comes ends the program here.
template <class Body>
auto guarded(Body&& body) noexcept -> decltype(body())
{
    try {
        return body();
    } catch (const std::exception& failure) {
        endAfterFailure(failure.what());
    } catch (...) {
        endAfterFailure("Unknown failure");
    }
}

/// The state object of a window whose class has windowProcedure<State>; null before its
/// WM_CREATE and from its WM_DESTROY on.
template <class State>
State* stateOf(HWND window) noexcept
{
    return reinterpret_cast<State*>(GetWindowLongPtrW(window, 0));
}

/// The window procedure of a class whose windows keep one State each.
///
/// `State(HWND)` is constructed at WM_CREATE and put into the window's extra bytes before
/// `LRESULT State::handle(UINT, WPARAM, LPARAM)` gets that same message; it is deleted after
/// handle() has had WM_DESTROY. Messages outside that life (WM_GETMINMAXINFO comes before it)
/// get the default treatment. A handler that destroys its own window must not touch its State
/// afterwards. Sent messages nest: handle() may be entered again from within any send.
template <class State>
LRESULT CALLBACK windowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    return guarded([&]() -> LRESULT {
        if (message == WM_CREATE) {
            auto state = std::make_unique<State>(window);
            SetWindowLongPtrW(window, 0, reinterpret_cast<LONG_PTR>(state.release()));
        }
        State* const state = stateOf<State>(window);
        if (!state) return DefWindowProcW(window, message, wParam, lParam);
        if (message != WM_DESTROY) return state->handle(message, wParam, lParam);
        const std::unique_ptr<State> last(state);
        const LRESULT result = state->handle(message, wParam, lParam);
        SetWindowLongPtrW(window, 0, 0);   // the children outlive it by some messages to their parent
        return result;
    });
}

/// A class record for windows with a State: procedure, extra bytes, module and arrow cursor
/// are set, the rest (style, brush, icon, menu) is the caller's.
template <class State>
WNDCLASSEXW windowClass(HINSTANCE module, const wchar_t* name) noexcept
{
    WNDCLASSEXW record{};
    record.cbSize = sizeof record;
    record.lpfnWndProc = windowProcedure<State>;
    record.cbWndExtra = sizeof(void*);
    record.hInstance = module;
    record.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    record.lpszClassName = name;
    return record;
}

/// The procedure of a dialog whose creator passes a `State*` as the dialog's parameter and
/// keeps that object alive as long as the dialog. `INT_PTR State::handle(HWND, UINT, WPARAM,
/// LPARAM)` gets WM_INITDIALOG and everything after it.
template <class State>
INT_PTR CALLBACK dialogProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    return guarded([&]() -> INT_PTR {
        if (message == WM_INITDIALOG) SetWindowLongPtrW(dialog, DWLP_USER, lParam);
        State* const state = reinterpret_cast<State*>(GetWindowLongPtrW(dialog, DWLP_USER));
        return state ? state->handle(dialog, message, wParam, lParam) : FALSE;
    });
}

}   // namespace belvor
