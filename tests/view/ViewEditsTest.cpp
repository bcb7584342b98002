#include "view/ViewEdits.h"

#include "tests/view/Views.h"
#include "view/Intensity.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

using namespace belvor;

namespace {

void expectPoint(const Point<3>& actual, const Point<3>& expected, const char* why)
{
    EXPECT_LT((actual - expected).length(), 1e-11 * (1.0 + expected.vector().length())) << why;
}

/// Equal and still saved: what setView drops without a trace.
void expectUntouched(const ViewParameters& next, const ViewParameters& view, const char* why)
{
    EXPECT_EQ(next, view) << why;
    EXPECT_TRUE(next.imageSaved) << why;
}

}   // namespace

TEST(ViewEdits, APlanDragSetsTheShownCoordinatesAndKeepsTheOthers)
{
    const ViewParameters view = test::savedView();
    const ViewParameters next = moveMarkers(view, Thumbnail::plan, {0.25, -0.5, 0, 0, false});
    expectPoint(next.eye, {0.5, 1, 2.34473197831402}, "eye");
    EXPECT_EQ(next.lookAt, view.lookAt);
    EXPECT_FALSE(next.imageSaved);

    ViewMarkers asked = viewMarkers(view, Thumbnail::elevation);
    asked.lookAtH = 0.1, asked.lookAtV = -0.2;
    const ViewParameters tilted = moveMarkers(view, Thumbnail::elevation, asked);
    EXPECT_EQ(tilted.lookAt, (Point<3>{0.2, 0, 0.4}));
    EXPECT_EQ(tilted.eye, view.eye) << "an undragged marker comes back bit for bit";

    const ViewParameters parallel = test::savedView(true);
    asked = viewMarkers(parallel, Thumbnail::plan);
    asked.eyeH += 0.125, asked.lookAtH += 0.125;   // the whole sight line is shifted: no tilt
    const ViewParameters shifted = moveMarkers(parallel, Thumbnail::plan, asked);
    expectPoint(shifted.lookAt, {0.25, 0, 0}, "look-at point");
    expectPoint(shifted.eye, shifted.lookAt + 1.7 * (parallel.eye - parallel.lookAt).unit(), "the same way");
    asked.eyeH += 0.5;
    const Point<3> eye = moveMarkers(parallel, Thumbnail::plan, asked).eye;
    EXPECT_NEAR((eye - shifted.lookAt).length(), 1.7, 1e-12) << "as far as shown";
}

TEST(ViewEdits, MarkersAndSlidersStayWhereTheyAreLetGoAndSentBackUnchangedChangeNothing)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<double> coordinate(-5, 5);
    const auto point = [&] { return Point<3>(coordinate(random), coordinate(random), coordinate(random)); };
    for (int i = 0; i < 1000; ++i) {
        ViewParameters view = test::savedView(i % 2 == 0);
        view.eye = point();
        view.lookAt = point();
        view.skyIntensity = std::fabs(coordinate(random));   // between two positions of its slider
        view.lights[1].intensity = 0.05;                     // shown as off
        for (const ViewParameters& next :
             {moveMarkers(view, Thumbnail::plan, viewMarkers(view, Thumbnail::plan)),
              moveMarkers(view, Thumbnail::elevation, viewMarkers(view, Thumbnail::elevation)),
              moveAlongSight(view, eyeSlideRecord(view)), turn(view, eyeMarker(view)),
              turn(view, *lightMarker(view, 0)), setIntensity(view, 3, 0),
              setIntensity(view, 0, intensityToSlider(view.skyIntensity))})
            expectUntouched(next, view, "sent back");

        if (view.parallel) continue;   // shows the eye near the model
        const ViewMarkers asked{coordinate(random), coordinate(random), coordinate(random),
                                coordinate(random), false};
        for (const Thumbnail panel : {Thumbnail::plan, Thumbnail::elevation})
            EXPECT_EQ(viewMarkers(moveMarkers(view, panel, asked), panel), asked) << "where they were let go";
        EyeSlideRecord slide = eyeSlideRecord(view);
        slide.eye = 0.5 * (slide.lookAt + 1.0);   // above the look-at point: below it the view turns round
        EXPECT_NEAR(eyeSlideRecord(moveAlongSight(view, slide)).eye, slide.eye, 1e-9);
        const SphereMarker to{36 * coordinate(random), 17 * coordinate(random), 0},
            is = eyeMarker(turn(view, to));
        EXPECT_NEAR(std::hypot(is.bearing - to.bearing, is.elevation - to.elevation), 0, 1e-9);
    }
}

TEST(ViewEdits, TheSlideMovesTheEyeAlongTheLineOfSight)
{
    const ViewParameters view = test::savedView(), parallel = test::savedView(true);
    EyeSlideRecord asked = eyeSlideRecord(view);
    const Point<3> behind(1.22450249386555, 1.22450249386555,
                          -1.00059346641585),   // two radii behind the centre
        far(-798.250892760822, -798.250892760822, 652.285015227415);
    for (const auto& [position, eye] : {std::pair{1.0, far}, {-0.5, behind}}) {
        asked.eye = position;
        expectPoint(moveAlongSight(view, asked).eye, eye, "not at infinity, or past the look-at point");
        EXPECT_EQ(moveAlongSight(view, asked).lookAt, view.lookAt);
    }
    asked = eyeSlideRecord(parallel);
    asked.eye = 0.9;
    expectUntouched(moveAlongSight(parallel, asked), parallel, "the slide shows the eye at its end");
    asked.lookAt = -0.5;
    const ViewParameters next = moveAlongSight(parallel, asked);
    expectPoint(next.lookAt, behind, "look-at point");
    expectPoint(next.eye, next.lookAt + (parallel.eye - parallel.lookAt), "both points move");
}

TEST(ViewEdits, SphereAndSlidersChangeTheEyeAndTheLights)
{
    const ViewParameters view = test::savedView();
    expectPoint(turn(view, {90, 0, 0}).eye, {4.68668256792222, 0, 0}, "from the side");
    const SphereMarker over = eyeMarker(turn(view, {0, 100, 0}));
    EXPECT_NEAR(std::fabs(over.bearing), 180, 1e-9) << "over the pole";
    EXPECT_NEAR(over.elevation, 80, 1e-9);
    EXPECT_EQ(turn(view, {200, -95, 2}).lights[1], (ParallelLightSetting{200, -95, 0})) << "not wrapped";
    EXPECT_EQ(removeLight(view, 0).lights[0].intensity, 0.0);
    EXPECT_NEAR(setIntensity(view, 0, 21).skyIntensity, 10.0, 1e-11);
    EXPECT_NEAR(setIntensity(view, 4, 40).lights[2].intensity, 10.0, 1e-11) << "clamped";
    const ViewParameters nine = setIntensity(view, 10, 11);
    ASSERT_EQ(nine.lights.size(), 9u);
    EXPECT_EQ(nine.lights[8], (ParallelLightSetting{-30, 60, 1}));
    EXPECT_EQ(zoomBy(view, 1.25).zoom, 0.364 * 1.25);
    EXPECT_EQ(zoomBy(view, 0.0).zoom, 0.0);
}

TEST(ViewEdits, AnEyeOnTheLookAtPointIsRefused)
{
    for (const bool parallel : {false, true}) {
        ViewParameters view = test::savedView(parallel);
        view.eye = {-1.0, -2.0, 0.25};
        view.lookAt = {0.5, 0.75, 0.25};   // level: the plan shows all of the distance
        const auto [eyeH, eyeV, lookAtH, lookAtV, isParallel] = viewMarkers(view, Thumbnail::plan);
        for (const ViewMarkers& both :
             {ViewMarkers{lookAtH, lookAtV, lookAtH, lookAtV, parallel}, {eyeH, eyeV, eyeH, eyeV, parallel}})
            expectUntouched(moveMarkers(view, Thumbnail::plan, both), view, "one on the other");
        EyeSlideRecord slide = eyeSlideRecord(view);
        slide.eye = slide.lookAt;
        expectUntouched(moveAlongSight(view, slide), view, "on the slide");
    }
    ViewParameters blind = test::savedView();   // as a parameter file may say
    blind.eye = blind.lookAt;
    EXPECT_NE(setIntensity(blind, 0, 20), blind) << "other requests are applied";
    EXPECT_NE(moveMarkers(blind, Thumbnail::plan, {0.5, 0, 0, 0, false}), blind) << "a marker moved away too";
}

TEST(ViewEdits, AClickInThePictureMovesTheLookAtPoint)
{
    for (const bool parallel : {false, true})
        for (const auto& [x, y] : {std::pair{304, 228}, {100, 50}, {607, 455}}) {
            const ViewParameters view = test::savedView(parallel);
            const Handle<Camera> camera = test::cameraOf(view);
            const ViewParameters next = lookAtPixel(view, *camera, test::boxPlace.viewToModel(), x, y);
            const Point<3> seen = camera->project(test::boxPlace.viewToModel()(next.lookAt));
            EXPECT_NEAR(std::hypot(seen[0] - x, seen[1] - y), 0, 1e-9) << parallel;
            const Vector<3> before = view.eye - view.lookAt, sight = next.eye - next.lookAt;
            EXPECT_NEAR(sight.length(), before.length(), 1e-11) << parallel;
            const double change = parallel ? (sight - before).length() : (next.eye - view.eye).length();
            EXPECT_NEAR(change, 0, 1e-11) << "a parallel view is shifted, the other one turned";
            EXPECT_NEAR(parallel ? dot(next.lookAt - view.lookAt, before) : 0, 0, 1e-11) << "no nearer";
        }
}

TEST(ViewEdits, NumbersThatAreNotFiniteAndLightsThatAreNoneAreIgnored)
{
    const ViewParameters view = test::savedView();
    const double none = std::nan(""), endless = std::numeric_limits<double>::infinity();
    for (const ViewParameters& next :
         {zoomBy(view, 1.0), zoomBy(view, -1.0), zoomBy(view, none), zoomBy(view, endless),
          moveMarkers(view, Thumbnail::plan, {none, 0, 0, 0, false}),
          moveMarkers(view, Thumbnail::elevation, {0, 0, 0, endless, false}),
          moveAlongSight(view, {0.5, none}), turn(view, {endless, 0, 0}), turn(view, {0, none, 1}),
          turn(view, {200, -95, 6}), removeLight(view, 1), removeLight(view, 5), setIntensity(view, 11, 11)})
        expectUntouched(next, view, "ignored");
}
