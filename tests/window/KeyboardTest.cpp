#include "tests/window/PanelsTest.h"

namespace belvor::window {

/// Where the keyboard works, and what its keys do.
class KeyboardTest : public PanelsTest {
protected:
    bool awaitFocus(HWND wanted)
    {
        return eventually([&] { return focus() == wanted; }, 2000);
    }
};

TEST_F(KeyboardTest, TabGoesRoundTheStripAndBack)
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

TEST_F(KeyboardTest, TheChosenButtonKeepsItsRectangleWhenPartsOfItArePainted)
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

TEST_F(KeyboardTest, SurvivesOtherWindowsAndAHiddenStrip)
{
    start();
    const std::unique_ptr<std::remove_pointer_t<HWND>, decltype(&DestroyWindow)> other(
        CreateWindowExW(WS_EX_TOOLWINDOW, L"STATIC", L"other program", WS_POPUP | WS_VISIBLE, 900, 600, 80,
                        40, nullptr, nullptr, nullptr, nullptr),
        DestroyWindow);
    const auto comesToFront = [](HWND window) {
        return eventually([&] { return GetForegroundWindow() == window; }, 2000);
    };
    SetForegroundWindow(other.get());
    EXPECT_TRUE(comesToFront(other.get()));
    program().dropFile(boxModel());
    EXPECT_TRUE(comesToFront(program().main())) << "by the drop";
    awaitModel(boxModel());

    const HWND slider = panel(ID_SLIDER + 1);
    tabTo(slider);
    const HWND dialog = program().openDialog(ID_ABOUT, "About Belvor");
    EXPECT_TRUE(eventually([&] { return focus() != slider; }, 2000));
    program().answer(dialog, IDOK);
    EXPECT_TRUE(awaitFocus(slider)) << "after a dialog";
    SetForegroundWindow(other.get());
    EXPECT_TRUE(comesToFront(other.get()));
    SetForegroundWindow(program().main());
    EXPECT_TRUE(awaitFocus(slider)) << "after another program";

    program().command(ID_SHOWCONTROLS);
    EXPECT_EQ(focus(), program().main()) << "no key moves a hidden slider";
    program().command(ID_SHOWCONTROLS);
    EXPECT_EQ(focus(), slider) << "and back";
}

TEST_F(KeyboardTest, EscapeGivesUpWhatGoesOn)
{
    startWith(boxModel());
    const HWND slider = panel(ID_SLIDER), status = program().child(ID_STATUSBAR);
    const LRESULT position = program().send(slider, TBM_GETPOS);
    const PixelPoint at = thumb(ID_SLIDER);
    moveMouse(slider, at.x, at.y);
    pressButton();
    moveMouse(slider, at.x + 35, at.y);
    pressKeys({VK_ESCAPE});
    releaseButton();
    moveMouse(drawing(), 300, 200);   // the slider's hint would stand where others are to show
    EXPECT_EQ(program().send(slider, TBM_GETPOS), position) << "a slider's thumb";
    EXPECT_EQ(awaitBox(false), "");

    pressKeys({VK_F11});
    EXPECT_TRUE(eventually([&] { return !IsWindowVisible(status); }));
    pressKeys({VK_ESCAPE});
    EXPECT_TRUE(eventually([&] { return IsWindowVisible(status) != FALSE; })) << "full screen";
}

TEST_F(KeyboardTest, AChangedFileIsToldAndReadAgain)
{
    const std::string model = inFolder("changing.thf");
    std::string text = readFile(boxModel());
    writeFile(model, text);
    startWith(model);
    ASSERT_EQ(awaitBox(false), "");
    text.replace(text.find("2 4 6"), 5, "1 4 6");   // a corner moves in: the bounds stay
    writeFile(model, text);
    EXPECT_TRUE(eventually([&] { return program().statusPart(0).find("F5") != std::string::npos; }, 6000))
        << program().statusPart(0);
    pressKeys({VK_F5});
    EXPECT_EQ(awaitPicture(rendered(model), true), "");
}

TEST_F(KeyboardTest, ThePictureIsCopied)
{
    startWith(boxModel());
    const Picture whole = rendered(boxModel());
    ASSERT_EQ(awaitPicture(whole), "");
    await("the thumbnails", [&] { return program().statusPart(0).empty(); });
    pressKeys({VK_CONTROL, 'C'});
    ASSERT_TRUE(program().awaitStatus(textOf(Text::pictureCopied))) << program().statusPart(0);
    ASSERT_TRUE(OpenClipboard(nullptr));
    const auto bitmap = static_cast<HBITMAP>(GetClipboardData(CF_BITMAP));   // the system makes it of the DIB
    ASSERT_TRUE(bitmap);
    EXPECT_EQ(difference(pictureOf(bitmap, whole.width, whole.height), whole), "");
    const HANDLE png = GetClipboardData(RegisterClipboardFormatW(L"PNG"));
    EXPECT_TRUE(png && GlobalSize(png) > 1000) << "and as PNG";
    CloseClipboard();
}

TEST_F(KeyboardTest, ALowStripScrollsToWhereTheKeyboardIs)
{
    startWith(boxModel());
    const HWND controls = program().child(ID_CONTROLS);
    const auto scrolls = [&] { return (GetWindowLongPtrW(controls, GWL_STYLE) & WS_VSCROLL) != 0; };
    const auto seen = [&] {
        RECT slider, strip;
        GetWindowRect(panel(ID_SLIDERLAST), &slider);
        GetWindowRect(controls, &strip);
        return slider.top >= strip.top && slider.bottom <= strip.bottom;
    };
    EXPECT_FALSE(scrolls());
    program().resizeClient(600, 380);
    EXPECT_TRUE(scrolls() && !seen());
    pressKeys({VK_SHIFT, VK_TAB});   // from the window to the last of the ring
    EXPECT_TRUE(eventually(seen, 2000));
    program().resizeClient(clientWidth, clientHeight);
    EXPECT_FALSE(scrolls());
}

}   // namespace belvor::window
