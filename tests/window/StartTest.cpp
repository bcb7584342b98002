#include "tests/window/WindowTest.h"
#include "ui/ClientSize.h"

namespace belvor::window {

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
    EXPECT_EQ(awaitBox(false), "");
}

TEST_F(WindowTest, FullScreenCoversTheScreenAndAClickReturns)
{
    startWith(boxModel());
    const HWND main = program().main();
    const auto partsShown = [&](bool status) {
        return IsWindowVisible(program().child(status ? ID_STATUSBAR : ID_CONTROLS)) != FALSE;
    };
    for (const bool maximised : {false, true}) {
        SCOPED_TRACE(maximised ? "from maximised" : "from a normal window");
        if (maximised) ShowWindow(main, SW_MAXIMIZE);
        program().send(main, WM_NULL);
        RECT before, after;
        GetWindowRect(main, &before);
        program().command(ID_FULLSCREEN);
        EXPECT_FALSE(partsShown(true) || partsShown(false));
        const PixelSize whole = clientSize(main);
        EXPECT_EQ(whole, (PixelSize{GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)}));
        POINT origin{0, 0};
        ClientToScreen(main, &origin);
        EXPECT_TRUE(origin.x == 0 && origin.y == 0);
        EXPECT_EQ(clientSize(drawing()).height, whole.width * 3 / 4) << "the image's proportions";
        program().send(drawing(), maximised ? WM_LBUTTONDOWN : WM_RBUTTONDOWN, 0, MAKELPARAM(100, 100));
        GetWindowRect(main, &after);
        EXPECT_TRUE(EqualRect(&before, &after)) << "the window is back where it was";
        EXPECT_TRUE(partsShown(true) && partsShown(false));
    }
}

}   // namespace belvor::window
