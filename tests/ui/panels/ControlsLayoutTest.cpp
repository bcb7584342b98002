#include "ui/panels/ControlsLayout.h"

#include <gtest/gtest.h>

using namespace belvor;

TEST(ControlsLayout, PlacesThePanelsByTheStripsSize)
{
    // Limited by the width, by the height (the left column grows), at the steps of the gaps, far too small.
    const struct { PixelSize client; int gapX, gapY; Place toolbar, eyeSlide, plan, sphere; PixelRect frame; } cases[] = {
        {{176, 520}, 6, 6, {15, 0, 24, 92}, {6, 104, 43, 410}, {55, 0, 115, 115}, {55, 242, 115, 147}, {55, 395, 170, 514}},
        {{176, 300}, 13, 6, {22, 0, 24, 92}, {13, 118, 43, 190}, {69, 0, 94, 94}, {69, 200, 94, 126}, {69, 332, 163, 294}},
        {{400, 200}, 79, 7, {119, 0, 24, 92}, {79, 250, 104, 87}, {262, 0, 59, 59}, {262, 132, 59, 91}, {262, 230, 321, 193}},
        {{176, 492}, 6, 6, {15, 0, 24, 92}, {6, 104, 43, 382}, {55, 0, 115, 115}, {55, 242, 115, 147}, {55, 395, 170, 486}},
        {{111, 520}, 7, 6, {7, 0, 24, 92}, {7, 106, 24, 410}, {38, 0, 66, 66}, {38, 144, 66, 98}, {38, 248, 104, 514}},
        {{112, 215}, 7, 7, {8, 0, 24, 92}, {7, 106, 27, 102}, {41, 0, 64, 64}, {41, 142, 64, 96}, {41, 245, 105, 208}},
        {{176, 216}, 22, 6, {32, 0, 24, 92}, {22, 136, 44, 106}, {88, 0, 66, 66}, {88, 144, 66, 98}, {88, 248, 154, 210}},
        {{60, 60}, 9, 2, {5, 0, 24, 92}, {9, 110, 15, -38}, {33, 0, 18, 18}, {33, 40, 18, 50}, {33, 92, 51, 58}},
    };
    for (const auto& c : cases) {
        const ControlsLayout layout = layOutControls(c.client);
        const std::string why = std::to_string(c.client.width) + " x " + std::to_string(c.client.height);
        EXPECT_EQ(layout.gapX, c.gapX) << why;
        EXPECT_EQ(layout.gapY, c.gapY) << why;
        EXPECT_EQ(layout.toolbar, c.toolbar) << why;
        EXPECT_EQ(layout.eyeSlide, c.eyeSlide) << why;
        EXPECT_EQ(layout.plan, c.plan) << why;
        EXPECT_EQ(layout.sphere, c.sphere) << why;
        EXPECT_EQ(layout.groupFrame, c.frame) << why;
    }
}

TEST(ControlsLayout, PlacesTheSlidersUnderThePanels)
{
    const struct { PixelSize client; Place elevation; PixelRect separator;
                   Place first, second, third, last; PixelRect colour, lastColour;
    } cases[] = {
        {{176, 520}, {55, 121, 115, 115}, {55, 433, 170, 437}, {57, 397, 111, 18}, {57, 415, 111, 18},
         {57, 435, 111, 18}, {57, 507, 111, 18}, {168, 437, 176, 451}, {168, 509, 176, 523}},
        {{176, 300}, {69, 100, 94, 94}, {69, 370, 163, 374}, {71, 334, 90, 18}, {71, 352, 90, 18}, {71, 372, 90, 18},
         {71, 444, 90, 18}, {161, 374, 169, 388}, {161, 446, 169, 460}},
        {{400, 200}, {262, 66, 59, 59}, {262, 268, 321, 272}, {264, 232, 55, 18}, {264, 250, 55, 18},
         {264, 270, 55, 18}, {264, 342, 55, 18}, {319, 272, 327, 286}, {319, 344, 327, 358}},
    };
    for (const auto& c : cases) {
        const ControlsLayout layout = layOutControls(c.client);
        const std::string why = std::to_string(c.client.width) + " x " + std::to_string(c.client.height);
        EXPECT_EQ(layout.elevation, c.elevation) << why;
        EXPECT_EQ(layout.separator, c.separator) << why;
        EXPECT_EQ(layout.sliders[0], c.first) << why;
        EXPECT_EQ(layout.sliders[1], c.second) << why;
        EXPECT_EQ(layout.sliders[2], c.third) << why;
        EXPECT_EQ(layout.sliders[6], c.last) << why;
        EXPECT_EQ(layout.colours[0], c.colour) << why;
        EXPECT_EQ(layout.colours[4], c.lastColour) << why;
    }
}
