#include "ui/display/ZoomDrag.h"

#include <gtest/gtest.h>

namespace belvor {

TEST(ZoomDrag, RectangleKeepsTheProportionsAndReachesTheAnchor)
{
    const struct {
        const char* why;
        PixelPoint anchor;
        PixelSize client;
        PixelRect rectangle;
    } cases[] = {
        {"wider than the window: the width counts", {500, 310}, {800, 600}, {300, 225, 501, 376}},
        {"higher than the window: the height counts", {410, 400}, {800, 600}, {267, 200, 534, 401}},
        {"captured mouse above and left of the window", {-400, -300}, {800, 600}, {-400, -300, 1201, 901}},
        {"an odd size has its centre pixel on the left", {7, 3}, {9, 7}, {1, 1, 8, 6}},
        {"the far ends of the coordinates do not overflow", {32767, 0}, {32767, 2}, {-1, 0, 32768, 3}},
        {"no area: nothing, and no division by it", {5, 5}, {0, 10}, {0, 0, 0, 0}},
    };
    for (const auto& c : cases) EXPECT_EQ(zoomRectangle(c.anchor, c.client), c.rectangle) << c.why;
}

TEST(ZoomDrag, FactorIsTheReachInHalvesOfTheWindow)
{
    const struct {
        PixelPoint release;
        double factor;
    } cases[] = {
        {{400, 300}, 0.0},  {{0, 0}, 1.0},      {{400, 450}, 0.5},
        {{900, 300}, 1.25}, {{-200, 300}, 1.5}, {{200, 100}, 2.0 / 3.0},
    };
    for (const auto& c : cases)
        EXPECT_DOUBLE_EQ(zoomFactor(c.release, {800, 600}), c.factor) << c.release.x << ',' << c.release.y;
    EXPECT_EQ(zoomFactor({5, 5}, {0, 0}), 1.0) << "no area";
}

TEST(ZoomDrag, TellsAClickFromARectangle)
{
    using Outcome = ZoomDrag::Outcome;
    const struct {
        const char* why;
        PixelPoint move;
        bool shows;
        PixelPoint release;
        Outcome outcome;
    } cases[] = {
        {"exactly as far as tolerated", {104, 97}, false, {96, 103}, Outcome::click},
        {"one pixel more across", {105, 100}, true, {105, 100}, Outcome::zoom},
        {"one pixel more down", {100, 104}, true, {100, 104}, Outcome::zoom},
        {"strayed and came back", {150, 100}, true, {100, 100}, Outcome::zoom},
        {"released far off before any movement came", {100, 100}, false, {300, 100}, Outcome::zoom},
    };
    for (const auto& c : cases) {
        ZoomDrag drag({4, 3});
        EXPECT_FALSE(drag.move({50, 50})) << "no button is down";
        drag.press({100, 100});
        EXPECT_EQ(drag.move(c.move), c.shows) << c.why;
        EXPECT_EQ(drag.anchor(), c.shows ? c.move : (PixelPoint{100, 100})) << c.why;
        EXPECT_EQ(drag.release(c.release), c.outcome) << c.why;
        EXPECT_EQ(drag.release(c.release), Outcome::none) << c.why << ", released once more";
        drag.press({100, 100});
        drag.cancel();
        EXPECT_FALSE(drag.move({300, 300})) << "given up";
    }
}

}   // namespace belvor
