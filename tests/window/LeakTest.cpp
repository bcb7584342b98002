#include "tests/window/PanelsTest.h"

#include <winternl.h>

#include <algorithm>
#include <array>
#include <cstdint>

namespace belvor::window {

namespace {

/// The pens, bitmaps, regions and device contexts that a process holds.
int gdiObjects(HANDLE process)
{
    if (const DWORD count = GetGuiResources(process, GR_GDIOBJECTS)) return static_cast<int>(count);
    // Wine does not count them, but keeps the table of them where the process's block points. Byte 14 of an
    // entry is its type.
    using Entry = std::array<std::uint8_t, 24>;
    PROCESS_BASIC_INFORMATION known{};
    NtQueryInformationProcess(process, ProcessBasicInformation, &known, sizeof known, nullptr);
    const void* table = nullptr;
    std::vector<Entry> entries(0x10000);
    ReadProcessMemory(process, reinterpret_cast<const char*>(known.PebBaseAddress) + 0xF8, &table,
                      sizeof table, nullptr);
    ReadProcessMemory(process, table, entries.data(), entries.size() * sizeof(Entry), nullptr);
    return static_cast<int>(
        std::ranges::count_if(entries, [](const Entry& entry) { return entry[14] != 0; }));
}

}   // namespace

TEST_F(PanelsTest, HundredsOfPaintsDragsAndResizesLeaveNoGdiObjectBehind)
{
    if (sizeof(void*) != 8) GTEST_SKIP() << "counts by the layout of a 64-bit process";
    startWith(boxModel());
    // 58 is the middle of the plan and the elevation: the look-at point.
    const std::tuple<HWND, int, int> panels[] = {{panel(ID_PLAN), 58, 58},
                                                 {panel(ID_ELEVATION), 58, 58},
                                                 {panel(ID_SPHERE), light().x, light().y},
                                                 {panel(ID_EYESLIDE), onSlide(0).x, onSlide(0).y},
                                                 {drawing(), 50, 50}};
    const auto work = [&](int rounds) {
        for (int i = 0; i < rounds; ++i) {
            for (const auto& [window, x, y] : panels) {
                program().send(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
                for (const int right : {10, 0}) {
                    program().send(window, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(x + right, y + 15));
                    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
                }
                program().send(window, WM_CAPTURECHANGED);
            }
            RedrawWindow(program().child(ID_CONTROLS), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
            program().resizeClient(clientWidth + i % 50, clientHeight - i % 60);
        }
        program().resizeClient(clientWidth, clientHeight);
        EXPECT_EQ(awaitBox(false), "");
        return gdiObjects(program().handle());
    };
    const int before = work(5);   // pens, brushes and theme parts that are made once
    EXPECT_GT(before, 0);
    // One object a round would be 50; the system keeps a few device contexts at hand, three objects each.
    EXPECT_LT(work(50), before + 30);
}

}   // namespace belvor::window
