#include "ui/panels/SphereProjection.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace belvor;

const SphereDisc disc({115, 147});   // centre (57, 57), rings 13 pixels apart

TEST(SphereProjection, MapsDirectionsToPixels)
{
    using Row = std::tuple<double, double, int, int>;
    for (const auto& [bearing, elevation, x, y] :   // whole degrees count, and below the equator its mirror
         {Row{-45, 30, 33, 81}, Row{90, 0, 109, 57}, Row{180, 0, 57, 5}, Row{0, 90, 57, 57},
          Row{-30, 30.9, 40, 87}, Row{-30, -30.9, 40, 87}})
        EXPECT_EQ(disc.toPixel({bearing, elevation}), (PixelPoint{x, y})) << bearing << ", " << elevation;
    // A whole number of pixels, which the product falls short of in another order.
    EXPECT_EQ(SphereDisc({92, 124}).toPixel({-150, 45}), (PixelPoint{46 - 11, 46 - 19}));
    EXPECT_EQ(SphereDisc({94, 126}).ring(1), (PixelRect{36, 36, 58, 58}));
    EXPECT_FALSE(SphereDisc({11, 43}).usable());
}

TEST(SphereProjection, MapsPixelsToDirections)
{
    constexpr SphereKeys free{}, snap{true, false}, below{false, true}, both{true, true};
    using Row = std::tuple<int, int, SphereKeys, double, double>;
    for (const auto& [x, y, keys, bearing, elevation] :   // outside the rim: the horizon
         {Row{200, 57, free, 90, 0}, Row{57, 0, free, 180, 0},
          Row{100, 30, free, 122.124998440388, 2.12190732840389}, Row{70, 70, snap, 45, 35.2643896827547},
          Row{97, 57, snap, 90, 35.2643896827547}, Row{70, 70, both, 45, -35.2643896827547}}) {
        const SphereDirection d = disc.toDirection(x, y, keys);
        EXPECT_NEAR(d.bearing, bearing, 1e-11) << x << ", " << y;
        EXPECT_NEAR(d.elevation, elevation, 1e-11) << x << ", " << y;
    }
    EXPECT_FALSE(std::signbit(disc.toDirection(200, 57, below).elevation))
        << "the horizon is neither above nor below";
}

TEST(SphereProjection, APressHitsTheEyeFirstAndOnlyLightsThatAreOn)
{
    SphereMarkers markers;   // the eye at (33, 81)
    markers.show({-45, 32, 1});
    EXPECT_EQ(hitItem(markers, disc, 33, 81), 0);
    EXPECT_EQ(hitItem(markers, disc, 49, 72), -1) << "no light is there";
    markers.show({-30, 60, 2});
    markers.show({-30, 60, 3});
    EXPECT_EQ(hitItem(markers, disc, 49, 72), 2) << "the first of two";
    EXPECT_EQ(hitItem(markers, disc, 59, 72), -1) << "exactly ten pixels away";
    EXPECT_EQ(hitItem(markers, SphereDisc({115, 147}, {144}), 59, 72), 2) << "within 15 at 144 dots an inch";
    markers.hide(1);
    EXPECT_EQ(hitItem(markers, disc, 49, 72), 3);
    EXPECT_FALSE(markers.show({0, 0, 9}) || markers.hide(8)) << "there are eight";
}

TEST(SphereProjection, ArrowsFormACrossAndTurnTheEye)
{
    EXPECT_EQ(turnedEye({179.5, 89}, SphereArrow::left, true), (SphereDirection{174.5, 89}));
    EXPECT_EQ(turnedEye({179.5, 89}, SphereArrow::up, true), (SphereDirection{179.5, 94}))
        << "turned round later";
    EXPECT_EQ(arrowArea(SphereArrow::left, {115, 147}, {17, 16, 15, 18}), (PixelArea{34, 127, 15, 18}));
    EXPECT_EQ(arrowArea(SphereArrow::up, {115, 147}, {17, 16, 15, 18}), (PixelArea{49, 113, 17, 16}));
}

TEST(SphereProjection, KeysMoveAMarkerByWholePixelsAndKeepItsHemisphere)
{
    for (const double elevation : {60.5, -60.5, 1.0, -1.0}) {
        SphereDirection at{-30, elevation};
        for (int i = 0; i < 26; ++i) at = disc.nudged(at, {i < 13 ? 1 : -1, 0});   // 13 pixels are a ring
        const bool onTheDisc = std::fabs(elevation) > 10;                          // such a way leads back
        EXPECT_TRUE(!onTheDisc || std::hypot(at.bearing + 30, at.elevation - elevation) < 1e-9) << elevation;
        EXPECT_EQ(at.elevation < 0.0, elevation < 0.0) << elevation;
    }
    EXPECT_EQ(disc.nudged({90, 0}, {5, 0}).elevation, 0.0) << "beyond the rim: the horizon";
    EXPECT_NEAR(disc.nudged({0, 90}, {0, 13}).elevation, 67.5, 1e-9) << "out of the zenith";
}
