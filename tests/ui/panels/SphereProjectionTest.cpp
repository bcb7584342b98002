#include "ui/panels/SphereProjection.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace belvor;

namespace {

const SphereDisc disc({115, 147});

}   // namespace

TEST(SphereProjection, DiscFitsThePanelAboveTheArrows)
{
    const struct { PixelSize client; int radius, centre; } cases[] = {{{115, 147}, 13, 57}, {{128, 160}, 15, 64}, {{94, 126}, 11, 47}};
    for (const auto& c : cases) {
        const SphereDisc fitted(c.client);
        EXPECT_EQ(fitted.radiusX, c.radius);
        EXPECT_EQ(fitted.radiusY, c.radius);
        EXPECT_EQ(fitted.centre, (PixelPoint{c.centre, c.centre}));
    }
    EXPECT_FALSE(SphereDisc({11, 43}).usable());
    EXPECT_FALSE(SphereDisc({0, 0}).usable());
    EXPECT_EQ(disc.ring(4), (PixelRect{5, 5, 109, 109}));
}

TEST(SphereProjection, DirectionsToPixels)
{
    const struct { double bearing, elevation; PixelPoint pixel; } cases[] = {
        {-45, 30, {33, 81}}, {-135, 30, {33, 33}}, {0, 0, {57, 109}}, {90, 0, {109, 57}}, {180, 0, {57, 5}}, {-90, 0, {5, 57}},
        {-30, 60, {49, 72}}, {-30, 30, {40, 87}},
        {-30, 30.9, {40, 87}},    // whole degrees count
        {-30, -30.9, {40, 87}},   // below the equator: its mirror
        {45, 89.9, {57, 57}}, {0, 90, {57, 57}}, {45, 35.2643896827547, {79, 79}},
    };
    for (const auto& c : cases) EXPECT_EQ(disc.toPixel({c.bearing, c.elevation}), c.pixel) << c.bearing << ", " << c.elevation;
}

TEST(SphereProjection, PixelsToDirections)
{
    constexpr SphereKeys free{}, snap{true, false}, below{false, true}, both{true, true};
    const struct { int x, y; SphereKeys keys; double bearing, elevation; } cases[] = {
        {57, 57, free, 0, 90}, {109, 57, free, 90, 0}, {57, 109, free, 0, 0},
        {200, 57, free, 90, 0}, {57, 0, free, 180, 0},   // outside the rim: the horizon
        {70, 70, free, 45, 58.1801948466054}, {100, 30, free, 122.124998440388, 2.12190732840389},
        {70, 70, snap, 45, 35.2643896827547}, {83, 57, snap, 90, 35.2643896827547}, {60, 58, snap, 90, 90}, {57, 57, snap, 0, 90},
        {70, 70, below, 45, -58.1801948466054}, {70, 70, both, 45, -35.2643896827547},
    };
    for (const auto& c : cases) {
        const SphereDirection d = disc.toDirection(c.x, c.y, c.keys);
        EXPECT_NEAR(d.bearing, c.bearing, 1e-11) << c.x << ", " << c.y;
        EXPECT_NEAR(d.elevation, c.elevation, 1e-11) << c.x << ", " << c.y;
    }
    EXPECT_FALSE(std::signbit(disc.toDirection(200, 57, below).elevation)) << "the horizon is neither above nor below";
}

TEST(SphereProjection, SnappingLeavesOnlyTheGrid)
{
    for (int y = 0; y < 115; ++y)
        for (int x = 0; x < 115; ++x) {
            const SphereDirection d = disc.toDirection(x, y, {true, false});
            EXPECT_EQ(std::remainder(d.bearing, 45.0), 0.0) << x << ", " << y;
            EXPECT_TRUE(d.elevation == 0.0 || d.elevation == 35.2643896827547 || d.elevation == 90.0) << x << ", " << y;
        }
}

TEST(SphereProjection, PressTakesTheEyeFirstAndOnlyLightsThatAreOn)
{
    SphereMarkers markers;   // the eye at (33, 81)
    EXPECT_TRUE(markers.show({-45, 32, 1}));
    EXPECT_EQ(hitItem(markers, disc, 33, 81), 0);
    EXPECT_EQ(hitItem(markers, disc, 49, 72), -1) << "light 1 is off";
    EXPECT_TRUE(markers.show({-30, 60, 2}));
    EXPECT_TRUE(markers.show({-30, 60, 3}));
    EXPECT_EQ(hitItem(markers, disc, 49, 72), 2) << "the first of two";
    EXPECT_EQ(hitItem(markers, disc, 59, 72), -1) << "exactly ten pixels away";
    EXPECT_EQ(hitItem(markers, SphereDisc({8, 8}), 4, 4), -1) << "nothing to see";
}

TEST(SphereProjection, MarkersTellWhetherAnythingChanged)
{
    SphereMarkers markers;
    EXPECT_FALSE(markers.show({-45, 30, 0}));
    EXPECT_TRUE(markers.show({-45, 31, 0}));
    EXPECT_TRUE(markers.show({0, 0, 8})) << "was absent";
    EXPECT_FALSE(markers.show({0, 0, 8}));
    EXPECT_FALSE(markers.show({0, 0, 9})) << "there are eight";
    EXPECT_TRUE(markers.hide(7));
    EXPECT_FALSE(markers.hide(7));
    EXPECT_FALSE(markers.hide(8));
}

TEST(SphereProjection, ArrowsTurnTheEye)
{
    const SphereDirection eye{179.5, 89};
    EXPECT_EQ(turnedEye(eye, SphereArrow::right, false), (SphereDirection{180.5, 89}));
    EXPECT_EQ(turnedEye(eye, SphereArrow::left, true), (SphereDirection{174.5, 89}));
    EXPECT_EQ(turnedEye(eye, SphereArrow::up, true), (SphereDirection{179.5, 94})) << "over the pole: the answer turns it round";
    EXPECT_EQ(turnedEye(eye, SphereArrow::down, false), (SphereDirection{179.5, 88}));

    constexpr ArrowSizes sizes{17, 16, 15, 18};
    EXPECT_EQ(arrowPlace(SphereArrow::right, {115, 147}, sizes), (ArrowPlace{66, 127, 15, 18}));
    EXPECT_EQ(arrowPlace(SphereArrow::down, {115, 147}, sizes), (ArrowPlace{49, 129, 17, 16}));
    EXPECT_EQ(arrowPlace(SphereArrow::left, {115, 147}, sizes), (ArrowPlace{34, 127, 15, 18}));
    EXPECT_EQ(arrowPlace(SphereArrow::up, {115, 147}, sizes), (ArrowPlace{49, 113, 17, 16}));
}
