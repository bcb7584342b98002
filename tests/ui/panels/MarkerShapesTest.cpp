#include "ui/panels/MarkerShapes.h"

#include <gtest/gtest.h>

using namespace belvor;

TEST(MarkerShapes, EyeLooksTowardsItsPoint)
{
    const auto glyph = [](PixelPoint eye, PixelPoint lookAt) { return eyeGlyph(eye, directionBetween(eye, lookAt, {1, 0})); };
    EXPECT_EQ(glyph({50, 40}, {90, 40}), (EyeGlyph{{{{59, 34}, {41, 40}, {59, 46}}},
                                                   {{{53, 37}, {56, 39}, {56, 41}, {53, 43}}},
                                                   {{{53, 39}, {52, 40}, {53, 41}}}}));
    EXPECT_EQ(glyph({50, 40}, {90, 40}).bounds(), (PixelRect{41, 34, 59, 46}));
    EXPECT_EQ(glyph({50, 40}, {50, 10}).bounds(), (PixelRect{44, 31, 56, 49})) << "looks up";
    EXPECT_EQ(glyph({50, 40}, {50, 40}), glyph({50, 40}, {90, 40})) << "no direction: to the right";
    const PixelRect slanted = glyph({50, 40}, {20, 10}).bounds();
    EXPECT_GE(slanted.left, 50 - 11);
    EXPECT_LE(slanted.bottom, 40 + 11);
}

TEST(MarkerShapes, SightLinesLeaveTheMarkersFree)
{
    EXPECT_EQ(sightLines({10, 20}, {50, 20}, false), (std::vector<PixelLine>{{{16, 20}, {44, 20}}}));
    EXPECT_EQ(sightLines({10, 20}, {50, 20}, true), (std::vector<PixelLine>{{{16, 22}, {44, 22}}, {{16, 18}, {44, 18}}}));
    EXPECT_EQ(sightLines({10, 20}, {10, 20}, false), (std::vector<PixelLine>{{{10, 20}, {10, 20}}})) << "no direction";
}

TEST(MarkerShapes, WedgeOpensUpwardsByTheZoomAngle)
{
    const ZoomWedge wedge = zoomWedge({21, 300}, 1.1344640137963);
    EXPECT_EQ(wedge.strokes, (std::array<PixelLine, 3>{{{{-5, 257}, {15, 291}}, {{47, 257}, {26, 291}}, {{4, 274}, {37, 274}}}}));
    EXPECT_EQ(wedge.bounds, (PixelRect{-5, 257, 47, 291}));
}
