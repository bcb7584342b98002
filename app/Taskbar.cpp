#include "app/Taskbar.h"

#include <objbase.h>
#include <shobjidl.h>

#include <algorithm>
#include <utility>

namespace belvor {
namespace {

constexpr ULONGLONG longWork = 5000;   // milliseconds after which the user looks elsewhere

bool anotherProgramIsInFront() noexcept
{
    DWORD process = 0;
    GetWindowThreadProcessId(GetForegroundWindow(), &process);
    return process != GetCurrentProcessId();
}

}   // namespace

Taskbar::~Taskbar()
{
    if (list) list->Release();
}

void Taskbar::tell(int done) noexcept
{
    if (!std::exchange(asked, true)) {
        CoCreateInstance(CLSID_TaskbarList, nullptr, CLSCTX_INPROC_SERVER, IID_ITaskbarList3,
                         reinterpret_cast<void**>(&list));
        if (list && FAILED(list->HrInit())) std::exchange(list, nullptr)->Release();
    }
    if (!list) return;
    if (done >= 0) list->SetProgressValue(window, static_cast<ULONGLONG>(done), whole);
    else list->SetProgressState(window, done == none ? TBPF_NOPROGRESS : TBPF_INDETERMINATE);
}

void Taskbar::show(const Progress& progress) noexcept
{
    if (began == 0) began = GetTickCount64();
    const int stages = progress.stageCount();
    if (stages < 1) return tell(unknown);
    const double done = (progress.stage() + progress.highWater()) / stages;
    tell(static_cast<int>(std::clamp(done, 0.0, 1.0) * whole));
}

void Taskbar::clear() noexcept
{
    if (began == 0) return;
    tell(none);
    const bool flashes = GetTickCount64() - began > longWork && anotherProgramIsInFront();
    began = 0;
    if (!flashes) return;
    FLASHWINFO flash{sizeof flash, window, FLASHW_TRAY | FLASHW_TIMERNOFG, 3, 0};
    FlashWindowEx(&flash);
}

}   // namespace belvor
