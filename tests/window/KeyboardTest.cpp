#include "tests/window/PanelsTest.h"

#include <commctrl.h>

namespace belvor::window {

class KeyboardTest : public PanelsTest {};

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
    EXPECT_EQ(program().send(slider, TBM_GETPOS), position) << "a slider's thumb";
    EXPECT_EQ(awaitBox(false), "");

    pressKeys({VK_F11});
    EXPECT_TRUE(eventually([&] { return !IsWindowVisible(status); }));
    pressKeys({VK_ESCAPE});
    EXPECT_TRUE(eventually([&] { return IsWindowVisible(status) != FALSE; })) << "full screen";

    const std::string large = sphereModel(2000000);
    moveMouse(drawing(), 300, 200);   // the slider's hint would stand where the load shows
    program().dropFile(large);
    program().answer(program().awaitDialog(textOf(Text::imageNotSaved)), IDNO);
    await("the load to begin", [&] { return program().statusPart(0) == fileName(large); });
    pressKeys({VK_ESCAPE});
    EXPECT_TRUE(program().awaitStatus(textOf(Text::abandoned))) << program().statusPart(0);
    EXPECT_EQ(program().title(), "Belvor - box.thf") << "a load";
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
