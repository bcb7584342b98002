#include "tests/window/BoxView.h"
#include "tests/window/Input.h"
#include "ui/Messages.h"

namespace belvor::window {

using DrawingTest = BoxViewTest;

TEST_F(DrawingTest, AClickMovesTheLookAtPointThere)
{
    startWith(boxModel());
    moveMouse(drawing(), 100, 50);
    pressButton();
    moveMouse(drawing(), 102, 51);   // within what counts as no drag: the press counts
    releaseButton();
    const ViewParameters after = view();
    EXPECT_NEAR(after.lookAt[0], -0.445094431196602, 1e-5);
    EXPECT_NEAR(after.lookAt[1], 0.808606420670602, 1e-5);
    EXPECT_NEAR(after.lookAt[2], 0.744834406570543, 1e-5);
}

TEST_F(DrawingTest, ADragZoomsByTheReachOfItsRectangle)
{
    // From different places: two presses at one place would be a double click.
    const struct { const char* why; POINT from, to; double factor; } cases[] = {
        {"half the width", {300, 200}, {456, 228}, 0.5},
        {"half the height", {250, 200}, {304, 342}, 0.5},
        {"to the edge: no change", {300, 250}, {0, 228}, 1.0},
        {"outside the window: further away", {200, 250}, {304, -57}, 1.25},
    };
    startWith(boxModel());
    const Picture picture = rendered(boxModel());
    for (const auto& c : cases) {
        program().command(ID_WHOLEMODEL);
        EXPECT_EQ(awaitPicture(picture), "");
        dragMouse(drawing(), {c.from, {330, 220}, c.to});
        EXPECT_NEAR(view().zoom, 0.364 * c.factor, 1e-6) << c.why;
    }
}

TEST_F(DrawingTest, TheRubberRectangleLeavesNoTrace)
{
    startWith(boxModel());
    const Picture picture = rendered(boxModel());
    ASSERT_EQ(awaitPicture(picture), "");
    const std::string before = savedParameters();
    ASSERT_EQ(awaitPicture(picture), "");

    moveMouse(drawing(), 300, 200);
    pressButton();
    moveMouse(drawing(), 420, 300);
    const Picture banded = screenOf(drawing());
    EXPECT_EQ(banded.at(420, 228) ^ picture.at(420, 228), 0xFFFFFFu) << "the right side, centred on the area";
    EXPECT_EQ(banded.at(188, 228) ^ picture.at(188, 228), 0xFFFFFFu) << "the left side";
    moveMouse(drawing(), 350, 250);
    RedrawWindow(drawing(), nullptr, nullptr, RDW_INVALIDATE);
    moveMouse(drawing(), 500, 400);
    rightClick();
    EXPECT_EQ(awaitPicture(picture), "") << "another button ends the drag";
    releaseButton();
    EXPECT_EQ(awaitPicture(picture), "");
    EXPECT_EQ(savedParameters(), before) << "and nothing was asked for";
}

TEST_F(DrawingTest, ADragDuringARenderLeavesNoTrace)
{
    const std::string model = sphereModel(200000);
    startWith(model);
    const Picture picture = rendered(model);
    ASSERT_EQ(awaitPicture(picture), "");
    for (int k = 0; k < 3; ++k) {
        program().command(ID_INCREASEZOOM);
        program().command(ID_WHOLEMODEL);   // a render of some tenths of a second
        moveMouse(drawing(), 300, 200);
        pressButton();
        for (int across = 310; across < 500; across += 40) moveMouse(drawing(), across, 150);
        program().send(drawing(), WM_RBUTTONDOWN, 0, MAKELPARAM(10, 10));
        releaseButton();
        EXPECT_EQ(awaitPicture(picture), "");
    }
}

TEST_F(DrawingTest, RequestsOfOtherProgramsAreTakenWithTheirSign)
{
    startWith(boxModel());
    double factor = 1.5;
    program().sendRecord(program().main(), UM_DISPLAYZOOM, &factor, sizeof factor);
    EXPECT_NEAR(view().zoom, 0.364 * 1.5, 1e-6);
    program().command(ID_WHOLEMODEL);
    program().send(program().main(), UM_DISPLAYCLICK, static_cast<WPARAM>(-20), -10);
    const ViewParameters after = view();
    EXPECT_GT(after.lookAt[2], 0.5) << "above and left of the drawing area, not far to the right";
}

TEST_F(DrawingTest, WithoutAModelTheMouseAsksForNothing)
{
    start();
    dragMouse(drawing(), {{100, 100}, {200, 200}, {300, 250}});
    moveMouse(drawing(), 50, 50);
    pressButton();
    releaseButton();
    EXPECT_EQ(countOther(screenOf(drawing()), 0), 0);
    EXPECT_EQ(close(), 0) << "no view to save, no question";
}

}   // namespace belvor::window
