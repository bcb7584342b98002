#include "ui/ValueText.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace belvor;

TEST(ValueText, ShowsTheValueThatADragSets)
{
    const std::tuple<std::string, std::string> cases[] = {
        {intensityText(2, 9, "."), "Parallel 1: 0.63"},
        {intensityText(0, 21, ","), "Sky: 10,00"},
        {intensityText(6, 0, "."), "Parallel 5: off"},
        {directionText(-30, 60), "bearing −30°, elevation 60°"},
        {directionText(-0.2, -89.6), "bearing 0°, elevation −90°"},
        {panelPointText(Thumbnail::plan, 0.25, 0.5, "."), "x 0.50, y −1.00 radii"},
        {panelPointText(Thumbnail::elevation, -1.0, -0.001, ","), "x −2,00, z 0,00 radii"},
        {slideText(0.5, "."), "2.00 radii from the centre"},
        {zoomText(0.5, "."), "field × 0.50"},
    };
    for (const auto& [is, wanted] : cases) EXPECT_EQ(is, wanted);
    EXPECT_GT(zoomText(1e308, ".").size(), 300u) << "nothing overflows";
    EXPECT_EQ(zoomText(std::nan(""), "."), "field × nan");
}
