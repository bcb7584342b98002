#include "view/PanelRecords.h"

#include "view/ViewCommands.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

using namespace belvor;

TEST(PanelRecords, ShowTheWholeModelViewInBothProjections)
{
    ViewParameters view = wholeModel(freshView(), ImageSize{800, 600});
    const ViewMarkers plan = viewMarkers(view, Thumbnail::plan);
    const EyeSlideRecord slide = eyeSlideRecord(view);
    const SphereMarker eye = eyeMarker(view);
    using Row = std::pair<double, double>;
    for (const auto& [is, wanted] :
         {Row{plan.eyeH, -1.43471362309424}, Row{plan.eyeV, 1.43471362309424},
          Row{viewMarkers(view, Thumbnail::elevation).eyeV, -1.17236598915701},
          Row{slide.eye, 0.743222956588657}, Row{slide.lookAt, 0.0},
          Row{slide.zoomAngle * 180.0 / std::numbers::pi, 40.0030118733077},
          Row{slide.extentTop, 0.295167235300867}, Row{slide.extentBottom, -0.295167235300867},
          Row{eye.bearing, -45.0}, Row{eye.elevation, 30.0196336535733}})
        EXPECT_NEAR(is, wanted, 2e-12 * std::max(1.0, std::fabs(wanted)));

    view.parallel = true;   // the eye is shown near the model, and at the end of the slide
    EXPECT_NEAR(shownEye(view)[0], -1.04082711978572, 1e-12);
    EXPECT_EQ(viewMarkers(view, Thumbnail::elevation).eyeV, shownEye(view)[2] * -0.5);
    EXPECT_TRUE(viewMarkers(view, Thumbnail::plan).parallel && eyeSlideRecord(view).parallel);
    EXPECT_EQ(eyeSlideRecord(view).eye, 1.0);
}

TEST(PanelRecords, LightsThatAreOffHaveNoMarkerAndAnEyeAtTheLookAtPointHasOne)
{
    ViewParameters view = freshView();
    view.lights[2].intensity = -0.5;   // it darkens the picture and has no marker
    EXPECT_EQ(lightMarker(view, 0), (SphereMarker{-30, 60, 1}));
    EXPECT_FALSE(lightMarker(view, 1) || lightMarker(view, 2));

    view.eye = view.lookAt = {1, 2, 3};
    EXPECT_EQ(eyeSlideRecord(view).eye, 0.0);
    EXPECT_EQ(eyeMarker(view).elevation, 0.0);
    view.parallel = true;
    EXPECT_EQ(shownEye(view), view.lookAt);
}
