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
