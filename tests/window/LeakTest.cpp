#include "platform/win32/Window.h"
#include "resources/ids.h"
#include "ui/display/Display.h"
#include "ui/panels/Controls.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>

namespace belvor {
namespace {

/// The pens, bitmaps, regions and device contexts that this process holds.
int gdiObjects()
{
    if (const DWORD count = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS)) return static_cast<int>(count);
    // Wine does not count them for us, but keeps the table of them where the process can see it.
    struct Entry {
        std::uint64_t object;
        std::uint32_t owner;
        std::uint16_t unique;
        std::uint8_t type, flags;
        std::uint64_t user;
    };
    using ProcessBlock = const char*(NTAPI*)();
    void* const function = reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "RtlGetCurrentPeb"));
    const char* const block = reinterpret_cast<ProcessBlock>(function)();
    const auto* const entries = *reinterpret_cast<const Entry* const*>(block + 0xF8);
    return static_cast<int>(std::count_if(entries, entries + 0x10000, [](const Entry& entry) { return entry.type != 0; }));
}

/// A main window that hears every request and does nothing about it.
class Host {
public:
    Host()
    {
        HINSTANCE const module = GetModuleHandleW(nullptr);
        InitCommonControls();
        registerDisplay(module);
        registerControls(module);
        WNDCLASSW record{};
        record.lpfnWndProc = DefWindowProcW;
        record.hInstance = module;
        record.lpszClassName = L"Host";
        RegisterClassW(&record);
        window = CreateWindowW(L"Host", L"Host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 500, 700, nullptr, nullptr, module, nullptr);
        controls = CreateWindowW(L"Controls", L"", WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, 0, 0, 176, 540, window, nullptr, module, nullptr);
        display = CreateWindowW(L"Display", L"", WS_CHILD | WS_VISIBLE, 200, 0, 200, 150, window, nullptr, module, nullptr);
    }
    ~Host() { DestroyWindow(window); }

    HWND panel(int number) const { return GetDlgItem(controls, number); }

    HWND window, controls, display;
};

void paint(HWND window)
{
    InvalidateRect(window, nullptr, TRUE);
    UpdateWindow(window);
}

void drag(HWND window, POINT from)
{
    const auto at = [](LONG x, LONG y) { return MAKELPARAM(x, y); };
    SendMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, at(from.x, from.y));
    EXPECT_EQ(GetCapture(), window) << "the press takes a marker";
    SendMessageW(window, WM_MOUSEMOVE, MK_LBUTTON, at(from.x + 10, from.y + 15));
    SendMessageW(window, WM_LBUTTONUP, 0, at(from.x - 5, from.y + 30));
}

}   // namespace

TEST(Windows, LeaveNoGdiObjectsBehind)
{
    if (sizeof(void*) != 8) GTEST_SKIP() << "counts by the layout of a 64-bit process";
    const Host host;
    ASSERT_TRUE(host.controls);
    const HWND plan = host.panel(ID_PLAN), slide = host.panel(ID_EYESLIDE), sphere = host.panel(ID_SPHERE);
    const HWND painted[] = {host.controls, plan, host.panel(ID_ELEVATION), slide, sphere, host.display};
    RECT area;
    GetClientRect(slide, &area);
    const POINT middle{area.right / 2, (area.bottom - 1) / 2};   // where the look-at point is

    const auto work = [&](int rounds) {
        for (int i = 0; i < rounds; ++i) {
            for (const HWND window : painted) paint(window);
            drag(plan, {58, 58});
            drag(slide, middle);
            drag(sphere, {33, 81});
            drag(host.display, {50, 50});
            MoveWindow(host.controls, 0, 0, 176 + i % 50, 540 - i % 60, TRUE);
            MoveWindow(host.controls, 0, 0, 176, 540, TRUE);
            MoveWindow(host.display, 200, 0, 150 + i % 40, 100 + i % 30, TRUE);
        }
    };
    work(20);   // pens, brushes and theme parts that are made once
    const int before = gdiObjects();
    work(770);   // ten thousand paints, drags and resizes
    EXPECT_GT(before, 0);
    EXPECT_EQ(gdiObjects(), before);
}

}   // namespace belvor
