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

void Taskbar::findList() noexcept
{
    if (std::exchange(asked, true)) return;
    CoCreateInstance(CLSID_TaskbarList, nullptr, CLSCTX_INPROC_SERVER, IID_ITaskbarList3,
                     reinterpret_cast<void**>(&list));
    if (list && FAILED(list->HrInit())) std::exchange(list, nullptr)->Release();
}

void Taskbar::show(const Progress& progress) noexcept
{
    findList();
    if (began == 0) began = GetTickCount64();
    if (!list) return;
    constexpr double whole = 1000.0;
    const int stages = progress.stageCount();
    if (stages < 1) {
        list->SetProgressState(window, TBPF_INDETERMINATE);
        return;
    }
    const double done = (progress.stage() + progress.highWater()) / stages;
    list->SetProgressValue(window, static_cast<ULONGLONG>(std::clamp(done, 0.0, 1.0) * whole),
                           static_cast<ULONGLONG>(whole));
}

void Taskbar::clear() noexcept
{
    if (began == 0) return;
    if (list) list->SetProgressState(window, TBPF_NOPROGRESS);
    const bool flashes = GetTickCount64() - began > longWork && anotherProgramIsInFront();
    began = 0;
    if (!flashes) return;
    FLASHWINFO flash{sizeof flash, window, FLASHW_TRAY | FLASHW_TIMERNOFG, 3, 0};
    FlashWindowEx(&flash);
}

}   // namespace belvor
