#include "ui/display/ZoomDrag.h"

#include <gtest/gtest.h>

using namespace belvor;

TEST(ZoomDrag, TheRectangleKeepsTheProportionsAndReachesTheMouse)
{
    // Columns: why, anchor, client, rectangle.
    const std::tuple<const char*, PixelPoint, PixelSize, PixelRect> cases[] = {
        {"wider than the window: the width counts", {500, 310}, {800, 600}, {300, 225, 501, 376}},
        {"higher than the window: the height counts", {410, 400}, {800, 600}, {267, 200, 534, 401}},
        {"captured mouse above and left of the window", {-400, -300}, {800, 600}, {-400, -300, 1201, 901}},
        {"an odd size has its centre pixel on the left", {7, 3}, {9, 7}, {1, 1, 8, 6}},
        {"the far ends of the coordinates do not overflow", {32767, 0}, {32767, 2}, {-1, 0, 32768, 3}},
        {"no area: nothing, and no division by it", {5, 5}, {0, 10}, {0, 0, 0, 0}},
    };
    for (const auto& [why, anchor, client, rectangle] : cases)
        EXPECT_EQ(zoomRectangle(anchor, client), rectangle) << why;
}

TEST(ZoomDrag, TheFactorIsTheDistanceInHalvesOfTheWindow)
{
    using Row = std::tuple<int, int, double>;
    for (const auto& [x, y, factor] : {Row{400, 450, 0.5}, Row{-200, 300, 1.5}, Row{200, 100, 2.0 / 3.0}})
        EXPECT_DOUBLE_EQ(zoomFactor({x, y}, {800, 600}), factor) << x << ',' << y;
    EXPECT_EQ(zoomFactor({5, 5}, {0, 0}), 1.0) << "no area";
}

TEST(ZoomDrag, AClickIsNotARectangle)
{
    using Outcome = ZoomDrag::Outcome;
    // Columns: why, move, shows, release, outcome.
    const std::tuple<const char*, PixelPoint, bool, PixelPoint, Outcome> cases[] = {
        {"exactly as far as tolerated", {104, 97}, false, {96, 103}, Outcome::click},
        {"one pixel more down", {100, 104}, true, {100, 104}, Outcome::zoom},
        {"released far off before any movement came", {100, 100}, false, {300, 100}, Outcome::zoom},
    };
    for (const auto& [why, move, shows, release, outcome] : cases) {
        ZoomDrag drag({4, 3});
        EXPECT_FALSE(drag.move({50, 50})) << "no button is down";
        drag.press({100, 100});
        EXPECT_EQ(drag.move(move), shows) << why;
        EXPECT_EQ(drag.anchor(), shows ? move : (PixelPoint{100, 100})) << why;
        EXPECT_EQ(drag.release(release), outcome) << why;
        EXPECT_EQ(drag.release(release), Outcome::none) << why << ", released once more";
        drag.press({100, 100});
        drag.cancel();
        EXPECT_FALSE(drag.move({300, 300})) << "given up";
    }
}
