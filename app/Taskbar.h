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
    Taskbar(const Taskbar&) = delete;
    Taskbar& operator=(const Taskbar&) = delete;
    virtual ~Taskbar();

    void show(const Progress& progress) noexcept;
    /// Nothing runs any more. The button flashes if it ran for long and another program is in front.
    void clear() noexcept;

    static constexpr int whole = 1000, unknown = -1, none = -2;

protected:
    /// Shows how much is done, of `whole`: `unknown` while something runs that cannot tell, `none` when
    /// nothing runs.
    virtual void tell(int done) noexcept;

private:
    HWND window;
    ITaskbarList3* list = nullptr;
    bool asked = false;    // for the list
    ULONGLONG began = 0;   // of what is shown, in milliseconds; 0 for nothing
};

}   // namespace belvor
