#include "tests/window/WindowTest.h"

#include <commctrl.h>

namespace belvor::window {

TEST_F(WindowTest, StartsEmptyWithItsChildrenInPlace)
{
    start();
    EXPECT_EQ(program().title(), "Belvor");
    EXPECT_EQ(program().statusPart(0), textOf(124));
    EXPECT_FALSE(IsWindowEnabled(program().child(ID_CONTROLS)));
    EXPECT_EQ(countOther(screenOf(drawing()), 0x000000), 0) << "nothing is drawn yet";

    const struct { int number; const wchar_t* className; const wchar_t* name; } children[] = {
        {ID_DISPLAY, L"Display", L"Drawing"},
        {ID_CONTROLS, L"Controls", L"ControlPanel"},
    };
    for (const auto& c : children) EXPECT_EQ(FindWindowExW(program().main(), nullptr, c.className, c.name), program().child(c.number)) << c.number;
    EXPECT_EQ(close(), 0);
}

TEST_F(WindowTest, LaysOutItsChildren)
{
    start();
    const auto place = [&](int number) {
        RECT r;
        GetWindowRect(program().child(number), &r);
        MapWindowPoints(nullptr, program().main(), reinterpret_cast<POINT*>(&r), 2);
        return r;
    };
    const LONG bar = place(ID_STATUSBAR).bottom - place(ID_STATUSBAR).top;
    EXPECT_EQ(place(ID_STATUSBAR).bottom, clientHeight);
    int parts[8] = {};
    EXPECT_EQ(program().sendRecordBehind(program().child(ID_STATUSBAR), SB_GETPARTS, 8, parts, sizeof parts), 4);
    EXPECT_EQ(parts[0], 313);
    EXPECT_EQ(parts[1], 470);
    EXPECT_EQ(parts[2], 627);

    const RECT controls = place(ID_CONTROLS), area = place(ID_DISPLAY);
    EXPECT_EQ(controls.left, 608);
    EXPECT_EQ(controls.right, 784);
    EXPECT_EQ(controls.bottom, clientHeight - bar);
    EXPECT_EQ(area.left, 0);
    EXPECT_EQ(area.right, drawnWidth);
    EXPECT_EQ(area.bottom - area.top, drawnHeight);
    EXPECT_EQ(area.top, (clientHeight - bar - drawnHeight) / 2);

    program().command(ID_SHOWCONTROLS);
    await("the strip to go", [&] { return !IsWindowVisible(program().child(ID_CONTROLS)); });
    program().send(program().main(), WM_NULL);
    EXPECT_EQ(place(ID_DISPLAY).bottom - place(ID_DISPLAY).top, clientHeight - bar) << "the whole height, the width in proportion";
    program().command(ID_SHOWCONTROLS);
    await("the strip to come back", [&] { return IsWindowVisible(program().child(ID_CONTROLS)) != FALSE; });
    program().send(program().main(), WM_NULL);
    EXPECT_EQ(place(ID_DISPLAY).right, drawnWidth);
}

TEST_F(WindowTest, SurvivesSizesThatLeaveNoRoom)
{
    startWith(boxModel());
    const struct { const char* why; int width, height; } sizes[] = {
        {"narrower than the control strip", 100, 400}, {"no height for the drawing", 400, 10}, {"nothing at all", 0, 0},
    };
    for (const auto& s : sizes) {
        RECT frame, client;
        GetWindowRect(program().main(), &frame);
        GetClientRect(program().main(), &client);
        SetWindowPos(program().main(), nullptr, 0, 0, s.width + (frame.right - frame.left - client.right),
                     s.height + (frame.bottom - frame.top - client.bottom), SWP_NOZORDER | SWP_NOSENDCHANGING);
        program().send(program().main(), WM_NULL);
        EXPECT_TRUE(program().running()) << s.why;
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
    for (const bool maximised : {false, true}) {
        SCOPED_TRACE(maximised ? "from maximised" : "from a normal window");
        if (maximised) ShowWindow(program().main(), SW_MAXIMIZE);
        program().send(program().main(), WM_NULL);
        RECT before;
        GetWindowRect(program().main(), &before);

        program().command(ID_FULLSCREEN);
        await("the status bar to go", [&] { return !IsWindowVisible(program().child(ID_STATUSBAR)); });
        program().send(program().main(), WM_NULL);
        RECT client;
        GetClientRect(program().main(), &client);
        POINT origin{0, 0};
        ClientToScreen(program().main(), &origin);
        EXPECT_EQ(client.right, GetSystemMetrics(SM_CXSCREEN));
        EXPECT_EQ(client.bottom, GetSystemMetrics(SM_CYSCREEN));
        EXPECT_EQ(origin.x, 0);
        EXPECT_EQ(origin.y, 0);
        EXPECT_FALSE(IsWindowVisible(program().child(ID_CONTROLS)));
        GetClientRect(drawing(), &client);
        EXPECT_EQ(client.bottom, 960) << "the image's proportions on 1280 x 1024";

        program().send(drawing(), maximised ? WM_LBUTTONDOWN : WM_RBUTTONDOWN, 0, MAKELPARAM(100, 100));
        await("the status bar to come back", [&] { return IsWindowVisible(program().child(ID_STATUSBAR)) != FALSE; });
        program().send(program().main(), WM_NULL);
        RECT after;
        GetWindowRect(program().main(), &after);
        EXPECT_TRUE(EqualRect(&before, &after)) << "the window is back where it was";
        EXPECT_TRUE(IsWindowVisible(program().child(ID_CONTROLS)));
    }
}

}   // namespace belvor::window
