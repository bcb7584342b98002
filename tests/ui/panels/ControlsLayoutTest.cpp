#include "ui/panels/ControlsLayout.h"

#include <gtest/gtest.h>

using namespace belvor;

TEST(ControlsLayout, PlacesEverythingByTheStripsSize)
{
    // Limited by the width, by the height (the left column grows), far too small.
    const struct {
        PixelSize client;
        PixelArea toolbar, eyeSlide, elevation, sphere, second, third, last;
        PixelRect frame, lastColour;
    } cases[] = {
        {{176, 520},
         {15, 0, 24, 92},
         {6, 104, 43, 410},
         {55, 121, 115, 115},
         {55, 242, 115, 147},
         {57, 415, 111, 18},
         {57, 435, 111, 18},
         {57, 507, 111, 18},
         {55, 395, 170, 514},
         {168, 509, 176, 523}},
        {{176, 300},
         {22, 0, 24, 92},
         {13, 118, 43, 190},
         {69, 100, 94, 94},
         {69, 200, 94, 126},
         {71, 352, 90, 18},
         {71, 372, 90, 18},
         {71, 444, 90, 18},
         {69, 332, 163, 294},
         {161, 446, 169, 460}},
        {{60, 60},
         {5, 0, 24, 92},
         {9, 110, 15, -38},
         {33, 20, 18, 18},
         {33, 40, 18, 50},
         {35, 112, 14, 18},
         {35, 132, 14, 18},
         {35, 204, 14, 18},
         {33, 92, 51, 58},
         {49, 206, 57, 220}},
    };
    for (const auto& c : cases) {
        const ControlsLayout layout = layOutControls(c.client);
        const auto why = ::testing::Message() << c.client.width << " x " << c.client.height;
        EXPECT_EQ(layout.toolbar, c.toolbar) << why;
        EXPECT_EQ(layout.eyeSlide, c.eyeSlide) << why;
        EXPECT_EQ(layout.plan, (PixelArea{c.elevation.x, 0, c.elevation.width, c.elevation.height})) << why;
        EXPECT_EQ(layout.elevation, c.elevation) << why;
        EXPECT_EQ(layout.sphere, c.sphere) << why;
        EXPECT_EQ(layout.sliders[1], c.second) << why;
        EXPECT_EQ(layout.sliders[2], c.third) << why;
        EXPECT_EQ(layout.sliders[6], c.last) << why;
        EXPECT_EQ(layout.groupFrame, c.frame) << why;
        EXPECT_EQ(layout.colours[4], c.lastColour) << why;
    }
}

// The same strip on monitors of 144 and 192 dots an inch: every stated number is multiplied, what is
// divided is divided in the monitor's pixels.
TEST(ControlsLayout, IsMultipliedByTheMonitorsScale)
{
    const ControlsLayout plain = layOutControls({176, 520});
    const ControlsLayout twice = layOutControls({352, 1040}, {192});
    const auto doubled = [](const PixelArea& a) {
        return PixelArea{2 * a.x, 2 * a.y, 2 * a.width, 2 * a.height};
    };
    EXPECT_EQ(twice.toolbar.width, 48);
    EXPECT_EQ(twice.toolbar.height, 184);
    EXPECT_EQ(twice.sphere.height - twice.sphere.width, 64);
    EXPECT_EQ(twice.sliders[3].y - twice.sliders[2].y, 36);
    EXPECT_NEAR(twice.plan.width, doubled(plain.plan).width, 2);   // a column is an eleventh rounded down
    EXPECT_NEAR(twice.groupFrame.bottom, 2 * plain.groupFrame.bottom, 2);

    const ControlsLayout half = layOutControls({264, 780}, {144});
    EXPECT_EQ(half.toolbar, (PixelArea{(64 - 36) / 2 + 9, 0, 36, 138}));
    EXPECT_EQ(half.plan, (PixelArea{82, 0, 173, 173}));
    EXPECT_EQ(half.elevation.y, 173 + 9);
    EXPECT_EQ(half.sliders[2], (PixelArea{85, 3 * 182 + 51 + 2 * 27 + 3, 167, 27}));
    EXPECT_EQ(half.colours[0], (PixelRect{82 + 173 - 3, 546 + 111, 82 + 173 + 9, 546 + 132}));
    EXPECT_EQ(layOutControls({167, 780}, {144}).gapX, 11) << "the threshold of 112 is 168 here";
    EXPECT_EQ(layOutControls({168, 780}, {144}).gapX, 9);
}

TEST(PixelScale, RoundsToTheNearestPixelAndLeaves96Alone)
{
    for (int pixels = -300; pixels < 300; ++pixels) EXPECT_EQ(PixelScale{}(pixels), pixels);
    const struct {
        int dotsPerInch, pixels, scaled;
    } cases[] = {{144, 10, 15}, {144, 1, 2},   {144, -1, -2}, {144, 7, 11},
                 {120, 2, 3},   {120, 10, 13}, {192, 9, 18}};
    for (const auto& c : cases)
        EXPECT_EQ(PixelScale{c.dotsPerInch}(c.pixels), c.scaled) << c.dotsPerInch << ": " << c.pixels;
    const struct {
        int dotsPerInch, size;
    } pictures[] = {{96, 16}, {108, 16}, {120, 20}, {144, 24}, {168, 24}, {192, 32}, {288, 32}};
    for (const auto& p : pictures)
        EXPECT_EQ(pictureSizes[pictureOf({p.dotsPerInch})], p.size) << p.dotsPerInch;
}
