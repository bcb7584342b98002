#include "view/WindowLayout.h"

#include <gtest/gtest.h>

using namespace belvor;

TEST(WindowLayout, TheDrawingAreaHasTheProportionsOfTheImage)
{
    // Columns: why, shape, controls, display.
    const std::tuple<const char*, WindowShape, PixelArea, PixelArea> cases[] = {
        {"at start", {784, 541, 20, false, true, {}}, {608, 0, 176, 521}, {0, 32, 608, 456}},
        {"full screen has no status bar", {784, 541, 20, true, true, {}}, {}, {31, 0, 721, 541}},
        {"half a pixel rounds up", {242, 391, 20, false, false, {}}, {}, {0, 94, 242, 182}},
        {"narrower than the controls", {100, 391, 20, false, true, {}}, {-76, 0, 176, 371}, {0, 185, 1, 1}},
        {"twice as many dots an inch",
         {1568, 1082, 40, false, true, {}, {192}},
         {1216, 0, 352, 1042},
         {0, 65, 1216, 912}},
        {"a very wide image keeps one row",
         {784, 541, 20, false, false, {2147483647, 1}},
         {},
         {0, 260, 784, 1}},
    };
    for (const auto& [why, shape, controls, display] : cases) {
        const WindowLayout layout = layOut(shape);
        EXPECT_EQ(layout.controls, controls) << why;
        EXPECT_EQ(layout.display, display) << why;
    }
    const WindowLayout layout = layOut({784, 541, 20, false, true, {}});
    EXPECT_EQ(layout.status, (PixelArea{0, 521, 784, 20}));
    const int fifths[] = {313, 470, 627, 784};
    for (int part = 0; part < 4; ++part) EXPECT_EQ(layout.partEnds[part], fifths[part]);
}
