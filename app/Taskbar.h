#pragma once

#include "platform/win32/Windows.h"
#include "render/queue/Progress.h"

struct ITaskbarList3;

namespace belvor {

/// How far a load or a save is, on the window's button in the taskbar. Interface thread. Where the system has
/// no such thing, nothing happens.
class Taskbar {
public:
    explicit Taskbar(HWND mainWindow) noexcept : window(mainWindow) {}
    /// One that has a taskbar already, which it takes over.
    Taskbar(HWND mainWindow, ITaskbarList3* taskbar) noexcept : window(mainWindow), list(taskbar), asked(true)
    {}
    Taskbar(const Taskbar&) = delete;
    Taskbar& operator=(const Taskbar&) = delete;
    ~Taskbar();

    void show(const Progress& progress) noexcept;
    /// Nothing runs any more. The button flashes if it ran for long and another program is in front.
    void clear() noexcept;

private:
    void findList() noexcept;

    HWND window;
    ITaskbarList3* list = nullptr;
    bool asked = false;    // for the list
    ULONGLONG began = 0;   // of what is shown, in milliseconds; 0 for nothing
};

}   // namespace belvor
