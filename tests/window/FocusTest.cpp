#include "tests/window/WindowTest.h"

namespace belvor::window {

/// Where the keyboard works.
class FocusTest : public WindowTest {
protected:
    bool awaitFocus(HWND wanted)
    {
        return eventually([&] { return focus() == wanted; }, 2000);
    }
    using Window = std::unique_ptr<std::remove_pointer_t<HWND>, decltype(&DestroyWindow)>;
    /// A window of another program, which has come to the front.
    static Window showOther()
    {
        Window other(CreateWindowExW(WS_EX_TOOLWINDOW, L"STATIC", L"other program", WS_POPUP | WS_VISIBLE,
                                     900, 600, 80, 40, nullptr, nullptr, nullptr, nullptr),
                     DestroyWindow);
        SetForegroundWindow(other.get());
        EXPECT_TRUE(eventually([&] { return GetForegroundWindow() == other.get(); }, 2000));
        return other;
    }
};

TEST_F(FocusTest, ADroppedFileBringsTheWindowToTheFront)
{
    start();
    const Window other = showOther();
    program().dropFile(boxModel());
    EXPECT_TRUE(eventually([&] { return GetForegroundWindow() == program().main(); }, 2000));
    awaitModel(boxModel());
}

TEST_F(FocusTest, TabGoesRoundTheStripAndBack)
{
    startWith(boxModel());
    std::vector<HWND> ring{drawing(), panel(ID_TOOLBAR)};
    const auto add = [&](int number, std::initializer_list<int> buttons) {
        ring.push_back(panel(number));
        for (const int button : buttons) ring.push_back(program().child(button, panel(number)));
    };
    add(ID_EYESLIDE, {ID_ADVANCE, ID_RETREAT});
    add(ID_PLAN, {});
    add(ID_ELEVATION, {});
    add(ID_SPHERE, {ID_EYEUP, ID_EYELEFT, ID_EYERIGHT, ID_EYEDOWN});
    for (int slider = ID_SLIDER; slider <= ID_SLIDERLAST; ++slider) add(slider, {});
    for (std::size_t i = 0; i <= ring.size(); ++i) {
        program().send(focus(), WM_KEYDOWN, VK_TAB);
        EXPECT_EQ(focus(), ring[i % ring.size()]) << i;
    }
    pressKeys({VK_SHIFT, VK_TAB});
    EXPECT_TRUE(awaitFocus(ring.back())) << "backwards";
}

TEST_F(FocusTest, TheChosenButtonKeepsItsRectangleWhenPartsOfItArePainted)
{
    startWith(boxModel());
    tabTo(panel(ID_TOOLBAR));
    const HWND toolbar = panel(ID_TOOLBAR);
    moveMouse(program().child(ID_STATUSBAR), 5, 5);
    Sleep(700);   // the toolbar fades its pointed-at button
    const Picture framed = screenOf(toolbar);
    RECT corner{4, 4, 12, 12};   // part of the first button
    for (int i = 0; i < 3; ++i) {
        RedrawWindow(toolbar, &corner, nullptr, RDW_INVALIDATE);
        eventually([&] { return !GetUpdateRect(toolbar, nullptr, FALSE); }, 2000);
        Sleep(50);
        EXPECT_EQ(difference(screenOf(toolbar), framed), "") << i;
    }
    program().send(toolbar, WM_KEYDOWN, VK_DOWN);
    EXPECT_TRUE(eventually([&] { return screenOf(toolbar) != framed; }, 2000)) << "the rectangle is seen";
}

TEST_F(FocusTest, SurvivesOtherWindowsAndAHiddenStrip)
{
    startWith(boxModel());
    const HWND slider = panel(ID_SLIDER + 1);
    tabTo(slider);
    const HWND dialog = program().openDialog(ID_ABOUT, "About Belvor");
    EXPECT_TRUE(eventually([&] { return focus() != slider; }, 2000));
    program().answer(dialog, IDOK);
    EXPECT_TRUE(awaitFocus(slider)) << "after a dialog";

    const Window other = showOther();
    SetForegroundWindow(program().main());
    EXPECT_TRUE(awaitFocus(slider)) << "after another program";

    program().command(ID_SHOWCONTROLS);
    EXPECT_EQ(focus(), program().main()) << "no key moves a hidden slider";
    program().command(ID_SHOWCONTROLS);
    EXPECT_EQ(focus(), slider) << "and back";
}

}   // namespace belvor::window
