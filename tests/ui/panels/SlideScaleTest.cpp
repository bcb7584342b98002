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
    EXPECT_EQ(scale.x, 21);
    const struct { double position; int y; } pixels[] = {
        {-1, 17}, {0, 202}, {1, 387}, {0.61132125765973, 315}, {0.29516723530087, 256}, {-0.29516723530087, 147}, {0.743222956588657, 339},
    };
    for (const auto& c : pixels) EXPECT_EQ(scale.toPixel(c.position), c.y) << c.position;
    const struct { int y; double position; } positions[] = {
        {17, -1}, {202, 0}, {203, 0.00540540540540541}, {387, 1}, {300, 0.52972972972973}, {-168, -2},
    };
    for (const auto& c : positions) EXPECT_NEAR(scale.toPosition(c.y), c.position, 1e-14) << c.y;
    EXPECT_FALSE(SlideScale({43, 35}, 17).usable()) << "the buttons fill it";
    EXPECT_TRUE(SlideScale({43, 36}, 17).usable());
}

TEST(SlideScale, StepsByAShareOfTheViewingDistance)
{
    const struct { bool retreat, large, keep; double eye, lookAt; } cases[] = {
        {false, false, false, 0.54, 0},
        {true, false, false, 0.66, 0},
        {false, true, false, 0.3, 0},
        {false, false, true, 0.54, -0.06},
        {true, true, true, 0.9, 0.3},
    };
    for (const auto& c : cases) {
        const EyeSlideRecord asked = steppedSlide(markers(0.6, 0), c.retreat, c.large, c.keep);
        EXPECT_NEAR(asked.eye, c.eye, 1e-15);
        EXPECT_NEAR(asked.lookAt, c.lookAt, 1e-15);
        EXPECT_EQ(asked.zoomAngle, markers(0, 0).zoomAngle) << "comes back as it was";
    }
    EXPECT_EQ(steppedSlide(markers(0.95, -0.5), true, true, false).eye, 1.0) << "within the slide";
    EXPECT_EQ(steppedSlide(markers(std::nan(""), 0), true, true, false).eye, -1.0);
}

TEST(SlideScale, DragAsksForTheMarkersThatItsGhostShows)
{
    const EyeSlideRecord record = markers(0.5, -0.25);   // 139 pixels apart
    const double to = scale.toPosition(240);
    const struct { MarkerDrag drag; SlideGhost ghost; double eye, lookAt; } cases[] = {
        {MarkerDrag::eye, {true, false, 240, 0}, to, -0.25},
        {MarkerDrag::lookAt, {false, true, 0, 240}, 0.5, to},
        {MarkerDrag::eyeKeepingDistance, {true, true, 240, 102}, to, -0.25 - 0.5 + to},
        {MarkerDrag::lookAtKeepingDistance, {true, true, 378, 240}, 0.5 + 0.25 + to, to},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(slideGhost(record, c.drag, scale, 240), c.ghost) << static_cast<int>(c.drag);
        const EyeSlideRecord asked = draggedSlide(record, c.drag, scale, 240);
        EXPECT_EQ(asked.eye, c.eye) << static_cast<int>(c.drag);
        EXPECT_EQ(asked.lookAt, c.lookAt) << static_cast<int>(c.drag);
    }
    EXPECT_EQ(draggedSlide(record, MarkerDrag::eye, scale, -50).eye, -1.0) << "released above the scale";
    EXPECT_EQ(draggedSlide(record, MarkerDrag::lookAt, scale, 5000).lookAt, 1.0) << "released below it";
}

TEST(SlideScale, PressTakesAMarkerOnTheCentreLine)
{
    const EyeSlideRecord record = markers(0.61132125765973, 0);   // at 315 and 202
    EXPECT_EQ(hitMarker(record, scale, 21, 324, false), MarkerDrag::eye);
    EXPECT_EQ(hitMarker(record, scale, 21, 325, false), MarkerDrag::none);
    EXPECT_EQ(hitMarker(record, scale, 14, 209, true), MarkerDrag::lookAtKeepingDistance);
    EXPECT_EQ(hitMarker(record, SlideScale({43, 30}, 17), 21, 15, false), MarkerDrag::none) << "too small to show anything";
}

TEST(SlideScale, BarAndLineOfTheModel)
{
    const EyeSlideRecord record;
    EXPECT_EQ(extentBar(record, scale, {43, 405}, 16), (PixelRect{13, 147, 29, 257}));
    EXPECT_EQ(slideLine(record, scale), (std::vector<PixelLine>{{{21, 17}, {21, 182}}, {{21, 222}, {21, 299}}, {{21, 331}, {21, 386}}}));
    const double gap = 36.0 / 185;   // pixels to positions
    EXPECT_EQ(slideLine(markers(gap, 0), scale).size(), 2u) << "the gaps close at 36 pixels";
    EXPECT_EQ(slideLine(markers(gap + 0.006, 0), scale).size(), 3u);
    EXPECT_EQ(slideLine(markers(1.0, 0), scale).size(), 2u) << "nothing below an eye at the end";
}
