#include "view/PanelRecords.h"

#include "view/ViewCommands.h"

#include <gtest/gtest.h>

#include <numbers>

using namespace belvor;

TEST(PanelRecords, ShowTheWholeModelViewInBothProjections)
{
    ViewParameters view = wholeModel(freshView(), ImageSize{800, 600});
    const ViewMarkers plan = viewMarkers(view, Thumbnail::plan),
                      elevation = viewMarkers(view, Thumbnail::elevation);
    EXPECT_NEAR(plan.eyeH, -1.43471362309424, 2e-12);
    EXPECT_NEAR(plan.eyeV, 1.43471362309424, 2e-12);
    EXPECT_NEAR(elevation.eyeV, -1.17236598915701, 2e-12);

    const EyeSlideRecord slide = eyeSlideRecord(view);
    EXPECT_NEAR(slide.eye, 0.743222956588657, 1e-12);
    EXPECT_EQ(slide.lookAt, 0.0);
    EXPECT_NEAR(slide.zoomAngle * 180.0 / std::numbers::pi, 40.0030118733077, 1e-10);
    EXPECT_NEAR(slide.extentTop, 0.295167235300867, 1e-12);
    EXPECT_EQ(slide.extentBottom, -slide.extentTop);
    EXPECT_NEAR(eyeMarker(view).bearing, -45.0, 1e-12);
    EXPECT_NEAR(eyeMarker(view).elevation, 30.0196336535733, 1e-10);

    view.parallel = true;   // the eye is shown near the model, and at the end of the slide
    EXPECT_NEAR(shownEye(view)[0], -1.04082711978572, 1e-12);
    EXPECT_EQ(viewMarkers(view, Thumbnail::elevation).eyeV, shownEye(view)[2] * -0.5);
    EXPECT_TRUE(viewMarkers(view, Thumbnail::plan).parallel);
    EXPECT_EQ(eyeSlideRecord(view).eye, 1.0);
    EXPECT_TRUE(eyeSlideRecord(view).parallel);
}

TEST(PanelRecords, LightsThatAreOffHaveNoMarkerAndAnEyeAtTheLookAtPointHasOne)
{
    ViewParameters view = freshView();
    view.lights[2].intensity = -0.5;   // it darkens the picture and has no marker
    EXPECT_EQ(lightMarker(view, 0), (SphereMarker{-30, 60, 1}));
    EXPECT_FALSE(lightMarker(view, 1));
    EXPECT_FALSE(lightMarker(view, 2));

    view.eye = view.lookAt = {1, 2, 3};
    EXPECT_EQ(eyeSlideRecord(view).eye, 0.0);
    EXPECT_EQ(eyeMarker(view).elevation, 0.0);
    view.parallel = true;
    EXPECT_EQ(shownEye(view), view.lookAt);
}
