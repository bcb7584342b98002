#include "tests/window/WindowTest.h"
#include "ui/panels/ControlsLayout.h"
#include "view/WindowLayout.h"

#include <commctrl.h>

namespace belvor::window {

namespace {

RECT placeOf(HWND window)
{
    RECT r;
    GetWindowRect(window, &r);
    MapWindowPoints(nullptr, GetParent(window), reinterpret_cast<POINT*>(&r), 2);
    return {r.left, r.top, r.right - r.left, r.bottom - r.top};
}

}   // namespace

TEST_F(WindowTest, StartsEmptyWithEverythingInPlace)
{
    start();
    EXPECT_EQ(program().title(), "Belvor");
    EXPECT_EQ(program().statusPart(0), textOf(Text::start));
    EXPECT_FALSE(IsWindowEnabled(program().child(ID_CONTROLS)));
    EXPECT_EQ(countOther(screenOf(drawing()), 0x000000), 0) << "nothing is drawn yet";

    const HWND controls = program().child(ID_CONTROLS), status = program().child(ID_STATUSBAR);
    WindowShape shape{clientWidth, clientHeight, static_cast<int>(placeOf(status).bottom), false, true, {}};
    const WindowLayout whole = layOut(shape);
    const ControlsLayout strip = layOutControls({WindowLayout::controlsWidth, whole.controls.height});
    const auto expectPlace = [](HWND window, const auto& wanted) {
        const RECT is = placeOf(window);
        EXPECT_TRUE(is.left == wanted.x && is.top == wanted.y && is.right == wanted.width
                    && is.bottom == wanted.height)
            << GetDlgCtrlID(window) << ": " << is.left << ' ' << is.top << ' ' << is.right << ' '
            << is.bottom;
    };
    expectPlace(drawing(), whole.display);
    expectPlace(controls, whole.controls);
    expectPlace(status, whole.status);
    const struct {
        int number;
        const wchar_t *className, *name;
        PixelArea place;
    } panels[] = {
        {ID_PLAN, L"Plan", L"Plan", strip.plan},
        {ID_ELEVATION, L"Plan", L"Elevation", strip.elevation},
        {ID_SPHERE, L"Stereogram", L"Stereogram", strip.sphere},
        {ID_EYESLIDE, L"EyeSlide", L"Eye", strip.eyeSlide},
        {ID_TOOLBAR, TOOLBARCLASSNAMEW, nullptr, strip.toolbar},
        {ID_SLIDERLAST, TRACKBAR_CLASSW, L"Light6", strip.sliders[6]},
    };
    for (const auto& p : panels) {
        EXPECT_EQ(FindWindowExW(controls, nullptr, p.className, p.name), panel(p.number)) << p.number;
        expectPlace(panel(p.number), p.place);
    }
    EXPECT_EQ(FindWindowExW(program().main(), nullptr, L"Display", L"Drawing"), drawing());
    EXPECT_EQ(FindWindowExW(program().main(), nullptr, L"Controls", L"ControlPanel"), controls);
    int parts[4] = {};
    EXPECT_EQ(program().sendRecord(status, SB_GETPARTS, 4, parts, sizeof parts), 4);
    EXPECT_TRUE(std::equal(parts, parts + 4, whole.partEnds));

    program().command(ID_SHOWCONTROLS);
    EXPECT_FALSE(IsWindowVisible(controls));
    shape.showControls = false;
    expectPlace(drawing(), layOut(shape).display);
    program().command(ID_SHOWCONTROLS);
    EXPECT_TRUE(IsWindowVisible(controls));
    expectPlace(drawing(), whole.display);
    EXPECT_EQ(close(), 0);
}

TEST_F(WindowTest, SurvivesSizesThatLeaveNoRoom)
{
    startWith(boxModel());
    for (const SIZE& s : {SIZE{100, 400}, {400, 10}, {0, 0}}) {
        SetWindowPos(program().main(), nullptr, 0, 0, s.cx, s.cy, SWP_NOZORDER | SWP_NOSENDCHANGING);
        program().send(program().main(), WM_NULL);
        EXPECT_TRUE(program().running()) << s.cx;
    }
    ShowWindow(program().main(), SW_MINIMIZE);
    program().send(program().main(), WM_NULL);
    ShowWindow(program().main(), SW_RESTORE);
    program().resizeClient(clientWidth, clientHeight);
    EXPECT_EQ(awaitPicture(rendered(boxModel())), "");
}

TEST_F(WindowTest, FullScreenCoversTheScreenAndAClickReturns)
{
    startWith(boxModel());
    const HWND main = program().main(), status = program().child(ID_STATUSBAR),
               controls = program().child(ID_CONTROLS);
    for (const bool maximised : {false, true}) {
        SCOPED_TRACE(maximised ? "from maximised" : "from a normal window");
        if (maximised) ShowWindow(main, SW_MAXIMIZE);
        program().send(main, WM_NULL);
        RECT before, after;
        GetWindowRect(main, &before);

        program().command(ID_FULLSCREEN);
        EXPECT_FALSE(IsWindowVisible(status));
        EXPECT_FALSE(IsWindowVisible(controls));
        EXPECT_EQ(sizeOf(main).cx, GetSystemMetrics(SM_CXSCREEN));
        EXPECT_EQ(sizeOf(main).cy, GetSystemMetrics(SM_CYSCREEN));
        POINT origin{0, 0};
        ClientToScreen(main, &origin);
        EXPECT_TRUE(origin.x == 0 && origin.y == 0);
        EXPECT_EQ(sizeOf(drawing()).cy, sizeOf(main).cx * 3 / 4) << "the image's proportions on 1280 x 1024";

        program().send(drawing(), maximised ? WM_LBUTTONDOWN : WM_RBUTTONDOWN, 0, MAKELPARAM(100, 100));
        GetWindowRect(main, &after);
        EXPECT_TRUE(EqualRect(&before, &after)) << "the window is back where it was";
        EXPECT_TRUE(IsWindowVisible(status) && IsWindowVisible(controls));
    }
}

}   // namespace belvor::window
