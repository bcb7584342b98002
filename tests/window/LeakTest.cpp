#include "tests/window/PanelsTest.h"

#include <winternl.h>

#include <algorithm>
#include <cstdint>

namespace belvor::window {

namespace {

/// The pens, bitmaps, regions and device contexts that a process holds.
int gdiObjects(HANDLE process)
{
    if (const DWORD count = GetGuiResources(process, GR_GDIOBJECTS)) return static_cast<int>(count);
    // Wine does not count them, but keeps the table of them where the process's block points.
    struct Entry {
        std::uint64_t object;
        std::uint32_t owner;
        std::uint16_t unique;
        std::uint8_t type, flags;
        std::uint64_t user;
    };
    PROCESS_BASIC_INFORMATION known{};
    NtQueryInformationProcess(process, ProcessBasicInformation, &known, sizeof known, nullptr);
    const void* table = nullptr;
    std::vector<Entry> entries(0x10000);
    ReadProcessMemory(process, reinterpret_cast<const char*>(known.PebBaseAddress) + 0xF8, &table,
                      sizeof table, nullptr);
    ReadProcessMemory(process, table, entries.data(), entries.size() * sizeof(Entry), nullptr);
    return static_cast<int>(
        std::count_if(entries.begin(), entries.end(), [](const Entry& entry) { return entry.type != 0; }));
}

}   // namespace

TEST_F(PanelsTest, HundredsOfPaintsDragsAndResizesLeaveNoGdiObjectBehind)
{
    if (sizeof(void*) != 8) GTEST_SKIP() << "counts by the layout of a 64-bit process";
    startWith(boxModel());
    from = wholeModel(freshView(), {});
    const PixelPoint middle{58, 58};   // of the plan and the elevation: the look-at point
    const std::pair<HWND, PixelPoint> panels[] = {{panel(ID_PLAN), middle},
                                                  {panel(ID_ELEVATION), middle},
                                                  {panel(ID_SPHERE), light()},
                                                  {panel(ID_EYESLIDE), onSlide(0)},
                                                  {drawing(), {50, 50}}};
    const auto work = [&](int rounds) {
        for (int i = 0; i < rounds; ++i) {
            for (const auto& [window, at] : panels) {
                const auto mouse = [&, window = window, x = at.x, y = at.y](UINT message, int right,
                                                                            int down) {
                    program().send(window, message, MK_LBUTTON, MAKELPARAM(x + right, y + down));
                };
                mouse(WM_LBUTTONDOWN, 0, 0);
                mouse(WM_MOUSEMOVE, 10, 15);
                RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
                mouse(WM_MOUSEMOVE, 0, 20);
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
