#include "ui/panels/ControlsLayout.h"

#include <gtest/gtest.h>

using namespace belvor;

namespace {

/// The areas "x y width height", then the group's frame and the last colour "left top right bottom".
std::string written(const ControlsLayout& layout)
{
    std::string text;
    const auto add = [&text](std::initializer_list<int> numbers) {
        text += text.empty() ? "" : ", ";
        for (const int number : numbers) text += std::to_string(number) + ' ';
        text.pop_back();
    };
    for (const PixelArea& a : {layout.toolbar, layout.eyeSlide, layout.plan, layout.elevation, layout.sphere,
                               layout.sliders[1], layout.sliders[2], layout.sliders[6]})
        add({a.x, a.y, a.width, a.height});
    for (const PixelRect& r : {layout.groupFrame, layout.colours[4]}) add({r.left, r.top, r.right, r.bottom});
    return text;
}

}   // namespace

TEST(ControlsLayout, PlacesEveryPartByTheSizeOfTheStripAndTheScaleOfTheMonitor)
{
    // Columns: width, height, dotsPerInch, parts. Limited by the width, by the height, far too small, and
    // scaled.
    const std::tuple<int, int, int, const char*> cases[] = {
        {176, 520, 96,
         "15 0 24 92, 6 104 43 410, 55 0 115 115, 55 121 115 115, 55 242 115 147, 57 415 111 18, "
         "57 435 111 18, 57 507 111 18, 55 395 170 514, 168 509 176 523"},
        {176, 300, 96,
         "22 0 24 92, 13 118 43 190, 69 0 94 94, 69 100 94 94, 69 200 94 126, 71 352 90 18, "
         "71 372 90 18, 71 444 90 18, 69 332 163 294, 161 446 169 460"},
        {60, 60, 96,
         "5 0 24 92, 9 110 15 -38, 33 0 18 18, 33 20 18 18, 33 40 18 50, 35 112 14 18, "
         "35 132 14 18, 35 204 14 18, 33 92 51 58, 49 206 57 220"},
        {264, 780, 144,
         "23 0 36 138, 9 156 64 615, 82 0 173 173, 82 182 173 173, 82 364 173 221, 85 624 167 27, "
         "85 654 167 27, 85 762 167 27, 82 594 255 771, 252 765 264 786"},
    };
    for (const auto& [width, height, dotsPerInch, parts] : cases)
        EXPECT_EQ(written(layOutControls({width, height}, {dotsPerInch})), parts) << dotsPerInch;
    EXPECT_EQ(layOutControls({167, 780}, {144}).gapX, 11) << "the threshold of 112 is 168 here";
    EXPECT_EQ(layOutControls({168, 780}, {144}).gapX, 9);
}

TEST(PixelScale, RoundsToTheNearestPixelAndLeaves96DotsAnInchUnchanged)
{
    for (int pixels = -300; pixels < 300; ++pixels) EXPECT_EQ(PixelScale{}(pixels), pixels);
    // Columns: dotsPerInch, pixels, scaled.
    const std::tuple<int, int, int> cases[] = {{144, 1, 2}, {144, -1, -2}, {120, 10, 13}, {192, 9, 18}};
    for (const auto& [dotsPerInch, pixels, scaled] : cases)
        EXPECT_EQ(PixelScale{dotsPerInch}(pixels), scaled) << dotsPerInch << ": " << pixels;
    for (const auto& [dotsPerInch, size] : {std::pair{108, 16}, {120, 20}, {168, 24}, {288, 32}})
        EXPECT_EQ(pictureSizes[pictureOf({dotsPerInch})], size) << dotsPerInch;
}
