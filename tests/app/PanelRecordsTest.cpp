#include "app/state/PanelRecords.h"

#include "app/state/Direction.h"
#include "app/state/ViewCommands.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace belvor;

namespace {

double near12(double expected) { return 1e-12 * std::fabs(expected); }

ViewParameters wholeModelView() { return wholeModel(freshView(), ImageSize{800, 600}); }

}   // namespace

TEST(Direction, SquashAndItsInverse)
{
    const struct { double distance, position; } cases[] = {
        {0, 0},
        {0.5, 0.155958260754739},
        {1, 0.295167235300867},
        {2, 0.5},
        {-1, -0.295167235300867},
        {2.85830369275204, 0.61132125765973},   // where the slide shows its eye before any model
        {2.26855469851081, 0.54},
        {127.313482325743, 0.99},
        {1303.79627115479, 0.9990234375},
    };
    for (const auto& c : cases) {
        EXPECT_NEAR(squash(c.distance), c.position, near12(c.position)) << c.distance;
        EXPECT_NEAR(unsquash(c.position), c.distance, near12(c.distance) * 1000) << c.position;   // steep at the end
    }
    EXPECT_GT(unsquash(1.0), 1e16);
}

TEST(PanelRecords, OfTheWholeModelView)
{
    const ViewParameters view = wholeModelView();
    const ViewMarkers plan = viewMarkers(view, Thumbnail::plan), elevation = viewMarkers(view, Thumbnail::elevation);
    EXPECT_NEAR(plan.eyeH, -1.43471362309424, 2e-12);
    EXPECT_NEAR(plan.eyeV, 1.43471362309424, 2e-12);
    EXPECT_NEAR(elevation.eyeH, -1.43471362309424, 2e-12);
    EXPECT_NEAR(elevation.eyeV, -1.17236598915701, 2e-12);

    const EyeSlideRecord slide = eyeSlideRecord(view);
    EXPECT_NEAR(slide.eye, 0.743222956588657, 1e-12);
    EXPECT_EQ(slide.lookAt, 0.0);
    EXPECT_NEAR(slide.zoomAngle * 180.0 / std::numbers::pi, 40.0030118733077, 1e-10);
    EXPECT_EQ(slide.extentTop, squash(1.0));
    EXPECT_EQ(slide.extentBottom, -slide.extentTop);

    const SphereMarker eye = eyeMarker(view);
    EXPECT_NEAR(eye.bearing, -45.0, 1e-12);
    EXPECT_NEAR(eye.elevation, 30.0196336535733, 1e-10);
    EXPECT_EQ(eye.item, 0u);
}

TEST(PanelRecords, ShowTheEyeOfAParallelViewNearTheModelAndAtTheEndOfTheSlide)
{
    ViewParameters view = wholeModelView();
    view.parallel = true;
    const Point<3> eye = shownEye(view);
    EXPECT_NEAR(eye[0], -1.04082711978572, 1e-12);
    EXPECT_NEAR(eye[2], 0.850504446453473, 1e-12);
    EXPECT_EQ(viewMarkers(view, Thumbnail::elevation).eyeV, eye[2] * -0.5);
    EXPECT_TRUE(viewMarkers(view, Thumbnail::plan).parallel);
    EXPECT_EQ(eyeSlideRecord(view).eye, 1.0);
    EXPECT_TRUE(eyeSlideRecord(view).parallel);
}

TEST(PanelRecords, HideLightsThatDoNotShine)
{
    ViewParameters view = freshView();
    view.lights[2].intensity = -0.5;   // darkens, but is nothing to drag
    ASSERT_TRUE(lightMarker(view, 0));
    EXPECT_EQ(*lightMarker(view, 0), (SphereMarker{-30, 60, 1}));
    EXPECT_FALSE(lightMarker(view, 1));
    EXPECT_FALSE(lightMarker(view, 2));
}

TEST(PanelRecords, AreFiniteWhenTheEyeIsAtTheLookAtPoint)
{
    ViewParameters view = freshView();
    view.eye = view.lookAt = {1, 2, 3};
    EXPECT_EQ(eyeSlideRecord(view).eye, 0.0);
    EXPECT_EQ(eyeMarker(view).elevation, 0.0);
    view.parallel = true;
    EXPECT_EQ(shownEye(view), view.lookAt);
}
