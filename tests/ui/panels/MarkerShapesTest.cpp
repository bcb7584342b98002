#include "ui/panels/MarkerShapes.h"

#include <gtest/gtest.h>

using namespace belvor;

TEST(MarkerShapes, TheEyePointsAtTheLookAtPointAndTheLinesStopBesideTheMarkers)
{
    const auto box = [](PixelPoint lookAt) {
        return eyeGlyph({50, 40}, directionBetween({50, 40}, lookAt, {1, 0})).bounds();
    };
    EXPECT_EQ(box({50, 10}), (PixelRect{44, 31, 56, 49})) << "looks up";
    EXPECT_EQ(box({50, 40}), (PixelRect{41, 34, 59, 46})) << "no direction: to the right";
    EXPECT_EQ(sightLines({10, 20}, {50, 20}, true),
              (std::vector<PixelLine>{{{16, 22}, {44, 22}}, {{16, 18}, {44, 18}}}));
    EXPECT_EQ(sightLines({10, 20}, {10, 20}, false), (std::vector<PixelLine>{{{10, 20}, {10, 20}}}))
        << "no direction";
    EXPECT_EQ(zoomWedge({21, 300}, 1.1344640137963).bounds, (PixelRect{-5, 257, 47, 291}))
        << "opens upwards by the zoom angle";

    // On a monitor of 192 dots an inch everything reaches twice as far from its place.
    EXPECT_EQ(eyeGlyph({50, 40}, {0, -1}, {192}).bounds(), (PixelRect{38, 22, 62, 58}));
}
