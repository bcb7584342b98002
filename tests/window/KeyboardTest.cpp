#include "tests/window/WindowTest.h"
#include "ui/panels/PlanGeometry.h"
#include "view/StandardViews.h"
#include "view/ViewCommands.h"
#include "view/ViewEdits.h"

#include <commctrl.h>

namespace belvor::window {

class KeyboardTest : public WindowTest {};

TEST_F(KeyboardTest, ViewsGoBackAndForthAndTheStandardOnesHaveKeys)
{
    startWith(boxModel());
    const ViewParameters whole = wholeModel(freshView(), {});
    pressKeys({VK_CONTROL, 'Z'});
    expectView(view(), whole, "nothing to undo");
    pressKeys({VK_CONTROL, '2'});
    Extent<3> box = Extent<3>::nothing();
    for (const Point<3>& corner : {Point<3>(0, 0, 0), Point<3>(2, 4, 6)}) box += corner;
    const ViewParameters front =
        standardView(whole, StandardView::front, box, {boxCentre, boxRadius}, ImageSize{});
    expectView(view(), front, "front");
    program().command(ID_INCREASEZOOM);
    pressKeys({VK_CONTROL, 'Z'});
    expectView(view(), front, "undone");
    pressKeys({VK_CONTROL, 'Z'});
    expectView(view(), whole, "twice");
    pressKeys({VK_CONTROL, 'Y'});
    expectView(view(), front, "redone");
}

TEST_F(KeyboardTest, EscapeGivesUpWhatGoesOn)
{
    startWith(boxModel());
    const Picture whole = rendered(boxModel());
    ASSERT_EQ(awaitPicture(whole), "");
    moveMouse(drawing(), 300, 200);
    pressButton();
    moveMouse(drawing(), 420, 300);
    EXPECT_NE(screenOf(drawing()), whole) << "the rectangle shows";
    pressKeys({VK_ESCAPE});
    releaseButton();
    EXPECT_EQ(awaitPicture(whole), "") << "the zoom rectangle";

    RECT thumb{};
    program().sendRecord(panel(ID_SLIDER), TBM_GETTHUMBRECT, 0, &thumb, sizeof thumb);
    const LRESULT position = program().send(panel(ID_SLIDER), TBM_GETPOS);
    moveMouse(panel(ID_SLIDER), (thumb.left + thumb.right) / 2, (thumb.top + thumb.bottom) / 2);
    pressButton();
    moveMouse(panel(ID_SLIDER), thumb.right + 30, 9);
    pressKeys({VK_ESCAPE});
    releaseButton();
    EXPECT_EQ(program().send(panel(ID_SLIDER), TBM_GETPOS), position) << "a slider's thumb";
    EXPECT_EQ(awaitPicture(whole), "");

    pressKeys({VK_F11});
    EXPECT_TRUE(eventually([&] { return !IsWindowVisible(program().child(ID_STATUSBAR)); }));
    pressKeys({VK_ESCAPE});
    EXPECT_TRUE(eventually([&] { return IsWindowVisible(program().child(ID_STATUSBAR)) != FALSE; }))
        << "full screen";

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
    writeFile(model, readFile(boxModel()));
    startWith(model);
    ASSERT_EQ(awaitPicture(rendered(model)), "");
    std::string text = readFile(model);
    text.replace(text.find("2 4 6"), 5, "1 4 6");   // a corner moves in: the bounds stay
    writeFile(model, text);
    EXPECT_TRUE(eventually([&] { return program().statusPart(0).find("F5") != std::string::npos; }, 6000))
        << program().statusPart(0);
    pressKeys({VK_F5});
    EXPECT_EQ(awaitShape(rendered(model)), "");
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
    const auto* const header = static_cast<const BITMAPINFOHEADER*>(GlobalLock(GetClipboardData(CF_DIB)));
    ASSERT_TRUE(header);
    EXPECT_EQ(header->biWidth, whole.width);
    Picture copied{header->biWidth, header->biHeight, {}};
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(header + 1);
    const int stride = (whole.width * 3 + 3) / 4 * 4;
    for (int y = 0; y < copied.height; ++y)
        for (int x = 0; x < copied.width; ++x) {
            const std::uint8_t* const p = bytes + (copied.height - 1 - y) * stride + 3 * x;
            copied.pixels.push_back(static_cast<std::uint32_t>(p[2] << 16 | p[1] << 8 | p[0]));
        }
    EXPECT_EQ(difference(copied, whole), "");
    const HANDLE png = GetClipboardData(RegisterClipboardFormatW(L"PNG"));
    EXPECT_TRUE(png && GlobalSize(png) > 1000) << "and as PNG";
    CloseClipboard();
}

TEST_F(KeyboardTest, ALowStripScrollsToWhereTheKeyboardIs)
{
    startWith(boxModel());
    const HWND controls = program().child(ID_CONTROLS), last = panel(ID_SLIDERLAST);
    const auto seen = [&] {
        RECT slider, strip;
        GetWindowRect(last, &slider);
        GetWindowRect(controls, &strip);
        return slider.top >= strip.top && slider.bottom <= strip.bottom;
    };
    EXPECT_FALSE(GetWindowLongPtrW(controls, GWL_STYLE) & WS_VSCROLL);
    program().resizeClient(600, 380);
    EXPECT_TRUE(GetWindowLongPtrW(controls, GWL_STYLE) & WS_VSCROLL);
    EXPECT_FALSE(seen());
    pressKeys({VK_SHIFT, VK_TAB});   // from the window to the last of the ring
    EXPECT_TRUE(eventually(seen, 2000));
    program().resizeClient(clientWidth, clientHeight);
    EXPECT_FALSE(GetWindowLongPtrW(controls, GWL_STYLE) & WS_VSCROLL);
}

TEST_F(KeyboardTest, AnArrowThatIsHeldGoesOnAndIsOneChange)
{
    startWith(boxModel());
    const ViewParameters whole = wholeModel(freshView(), {});
    const HWND button = program().child(ID_EYERIGHT, panel(ID_SPHERE));
    moveMouse(button, 8, 8);
    pressButton();
    Sleep(1300);
    releaseButton();
    const SphereMarker before = eyeMarker(whole), after = eyeMarker(view());
    const double steps = after.bearing - before.bearing;
    EXPECT_GT(steps, 3.5) << "degrees";
    EXPECT_NEAR(steps, std::round(steps), 1e-3);
    program().command(ID_UNDO);
    expectView(view(), whole, "undone");
}

TEST_F(KeyboardTest, AnEyeFarAwayIsDraggedInByItsPointer)
{
    startWith(boxModel());   // the eye is outside the plan then
    const HWND plan = panel(ID_PLAN);
    const PixelSize size{sizeOf(plan).cx, sizeOf(plan).cy};
    const ViewParameters whole = wholeModel(freshView(), {});
    const ViewMarkers markers = viewMarkers(whole, Thumbnail::plan);
    const auto pointer = edgePointer(eyePixel(markers, size), size);
    ASSERT_TRUE(pointer);
    const PixelPoint to{30, 80};
    dragMouse(plan, {{pointer->x, pointer->y}, {to.x, to.y}});
    expectView(
        view(),
        moveMarkers(whole, Thumbnail::plan, draggedMarkers(markers, MarkerDrag::eye, size, to.x, to.y)),
        "dragged in");
}

}   // namespace belvor::window
