#include "ui/panels/SlideScale.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace belvor;

const SlideScale scale({43, 405}, 17);   // from 17 to 387

TEST(SlideScale, AStepIsAShareOfTheViewingDistance)
{
    using Row = std::tuple<double, bool, bool, bool, double, double>;
    for (const auto& [from, retreat, large, keep, eye, lookAt] :
         {Row{0.6, false, true, false, 0.3, 0}, Row{0.6, false, false, true, 0.54, -0.06},
          Row{0.6, true, true, true, 0.9, 0.3}, Row{0.95, true, true, false, 1, 0},
          Row{std::nan(""), true, true, false, -1, 0}}) {
        const EyeSlideRecord asked = steppedSlide({from, 0}, retreat, large, keep);
        EXPECT_NEAR(asked.eye, eye, 1e-15);
        EXPECT_NEAR(asked.lookAt, lookAt, 1e-15);
    }
}

TEST(SlideScale, ADragRequestsTheMarkersThatItShows)
{
    const EyeSlideRecord record{0.5, -0.25};   // 139 pixels apart
    const double to = scale.toPosition(240);
    const std::tuple<MarkerDrag, SlideGhost, EyeSlideRecord> cases[] = {
        {MarkerDrag::eye, {true, false, 240, 0}, {to, -0.25}},
        {MarkerDrag::lookAt, {false, true, 0, 240}, {0.5, to}},
        {MarkerDrag::eyeKeepingDistance, {true, true, 240, 102}, {to, -0.75 + to}},
        {MarkerDrag::lookAtKeepingDistance, {true, true, 378, 240}, {0.75 + to, to}},
    };
    for (const auto& [drag, ghost, asked] : cases) {
        EXPECT_EQ(slideGhost(record, drag, scale, 240), ghost) << static_cast<int>(drag);
        EXPECT_EQ(draggedSlide(record, drag, scale, 240), asked) << static_cast<int>(drag);
    }
    EXPECT_EQ(draggedSlide(record, MarkerDrag::eye, scale, -50).eye, -1.0) << "released above the scale";
    EXPECT_EQ(hitMarker(record, SlideScale({43, 30}, 17), 21, 15, false), MarkerDrag::none)
        << "too small to show anything";
    EXPECT_FALSE(SlideScale({43, 35}, 17).usable()) << "the buttons fill it";
}

TEST(SlideScale, TheBarAndTheLineLeaveTheMarkersFree)
{
    EXPECT_EQ(extentBar({}, scale, {43, 405}, 16), (PixelRect{13, 147, 29, 257}));
    const std::vector<PixelLine> pieces{
        {{21, 17}, {21, 182}}, {{21, 222}, {21, 299}}, {{21, 331}, {21, 386}}};
    EXPECT_EQ(slideLine({}, scale), pieces);
    EXPECT_EQ(slideLine({}, SlideScale({43, 405}, 17, {192}))[1], (PixelLine{{21, 242}, {21, 283}}));
    EXPECT_EQ(slideLine({36.0 / 185, 0}, scale).size(), 2u) << "the gaps close at 36 pixels";
}

TEST(SlideScale, KeysMoveAMarkerByWholePixels)
{
    const EyeSlideRecord record{0.5003, -0.25};
    EXPECT_NEAR(nudgedSlide(record, MarkerDrag::eye, scale, 8).eye, 0.5003 + 16.0 / 370, 1e-15);
    const EyeSlideRecord both = nudgedSlide(record, MarkerDrag::lookAtKeepingDistance, scale, -1);
    EXPECT_NEAR(both.lookAt, -0.25 - 2.0 / 370, 1e-15);
    EXPECT_NEAR(both.eye, 0.5003 - 2.0 / 370, 1e-15);
    EXPECT_EQ(nudgedSlide({0.999, 0}, MarkerDrag::eye, scale, 8).eye, 1.0) << "not beyond the end";
    EXPECT_EQ(nudgedSlide(record, MarkerDrag::eye, SlideScale({43, 30}, 17), 1), record) << "nothing to see";
}
