#include "ui/panels/SlideScale.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace belvor;

namespace {

const SlideScale scale({43, 405}, 17);   // from 17 to 387

EyeSlideRecord markers(double eye, double lookAt)
{
    EyeSlideRecord record;
    record.eye = eye;
    record.lookAt = lookAt;
    return record;
}

}   // namespace

TEST(SlideScale, MapsPositionsToPixelsAndBack)
{
    const struct {
        double position;
        int y;
        double back;
    } cases[] = {
        {-1, 17, -1},
        {0, 202, 0},
        {1, 387, 1},
        {0.61132125765973, 315, 113.0 / 185},
        {-0.29516723530087, 147, -55.0 / 185},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(scale.toPixel(c.position), c.y) << c.position;
        EXPECT_NEAR(scale.toPosition(c.y), c.back, 1e-14) << c.y;
    }
    EXPECT_FALSE(SlideScale({43, 35}, 17).usable()) << "the buttons fill it";
    EXPECT_TRUE(SlideScale({43, 36}, 17).usable());
}

TEST(SlideScale, StepsByAShareOfTheViewingDistance)
{
    const struct {
        double from;
        bool retreat, large, keep;
        double eye, lookAt;
    } cases[] = {
        {0.6, false, false, false, 0.54, 0},      {0.6, true, false, false, 0.66, 0},
        {0.6, false, true, false, 0.3, 0},        {0.6, false, false, true, 0.54, -0.06},
        {0.6, true, true, true, 0.9, 0.3},        {0.95, true, true, false, 1, 0},
        {std::nan(""), true, true, false, -1, 0},
    };
    for (const auto& c : cases) {
        const EyeSlideRecord asked = steppedSlide(markers(c.from, 0), c.retreat, c.large, c.keep);
        EXPECT_NEAR(asked.eye, c.eye, 1e-15);
        EXPECT_NEAR(asked.lookAt, c.lookAt, 1e-15);
    }
}

TEST(SlideScale, DragAsksForTheMarkersThatItsGhostShows)
{
    const EyeSlideRecord record = markers(0.5, -0.25);   // 139 pixels apart
    const double to = scale.toPosition(240);
    const struct {
        MarkerDrag drag;
        SlideGhost ghost;
        double eye, lookAt;
    } cases[] = {
        {MarkerDrag::eye, {true, false, 240, 0}, to, -0.25},
        {MarkerDrag::lookAt, {false, true, 0, 240}, 0.5, to},
        {MarkerDrag::eyeKeepingDistance, {true, true, 240, 102}, to, -0.75 + to},
        {MarkerDrag::lookAtKeepingDistance, {true, true, 378, 240}, 0.75 + to, to},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(slideGhost(record, c.drag, scale, 240), c.ghost) << static_cast<int>(c.drag);
        const EyeSlideRecord asked = draggedSlide(record, c.drag, scale, 240);
        EXPECT_EQ(asked.eye, c.eye) << static_cast<int>(c.drag);
        EXPECT_EQ(asked.lookAt, c.lookAt) << static_cast<int>(c.drag);
    }
    EXPECT_EQ(draggedSlide(record, MarkerDrag::eye, scale, -50).eye, -1.0) << "released above the scale";
    EXPECT_EQ(draggedSlide(record, MarkerDrag::lookAt, scale, 5000).lookAt, 1.0) << "released below it";
    EXPECT_EQ(hitMarker(record, SlideScale({43, 30}, 17), 21, 15, false), MarkerDrag::none)
        << "too small to show anything";
}

TEST(SlideScale, BarAndLineOfTheModel)
{
    EXPECT_EQ(extentBar({}, scale, {43, 405}, 16), (PixelRect{13, 147, 29, 257}));
    const std::vector<PixelLine> pieces{
        {{21, 17}, {21, 182}}, {{21, 222}, {21, 299}}, {{21, 331}, {21, 386}}};
    EXPECT_EQ(slideLine({}, scale), pieces);
    EXPECT_EQ(slideLine({}, SlideScale({43, 405}, 17, {192}))[1], (PixelLine{{21, 242}, {21, 283}}));
    EXPECT_EQ(slideLine(markers(36.0 / 185, 0), scale).size(), 2u) << "the gaps close at 36 pixels";
    EXPECT_EQ(slideLine(markers(1.0, 0), scale).size(), 2u) << "nothing below an eye at the end";
}

TEST(SlideScale, KeysMoveAMarkerByWholePixelsFromWhereItIs)
{
    const EyeSlideRecord record = markers(0.5003, -0.25);
    EXPECT_NEAR(nudgedSlide(record, MarkerDrag::eye, scale, 8).eye, 0.5003 + 16.0 / 370, 1e-15);
    const EyeSlideRecord both = nudgedSlide(record, MarkerDrag::lookAtKeepingDistance, scale, -1);
    EXPECT_NEAR(both.lookAt, -0.25 - 2.0 / 370, 1e-15);
    EXPECT_NEAR(both.eye, 0.5003 - 2.0 / 370, 1e-15);
    EXPECT_EQ(nudgedSlide(markers(0.999, 0), MarkerDrag::eye, scale, 8).eye, 1.0) << "not beyond the end";
    EXPECT_EQ(nudgedSlide(record, MarkerDrag::eye, SlideScale({43, 30}, 17), 1), record) << "nothing to see";
}
