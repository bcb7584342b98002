#include "view/ViewGestures.h"

#include "tests/view/Views.h"
#include "view/PanelRecords.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace belvor;

namespace {

using Kind = ViewGesture::Kind;

ViewParameters startView(bool parallel)
{
    ViewParameters view = test::savedView(parallel);
    view.lookAt = {0.2, -0.1, 0.3};
    return view;
}

ViewParameters after(const ViewParameters& view, const ViewGesture& step)
{
    return gestured(view, step, *test::cameraOf(view), test::boxPlace.viewToModel());
}

/// Where the drawing area shows a point of the view.
Point<3> pixelOf(const ViewParameters& view, const Point<3>& point)
{
    return test::cameraOf(view)->project(test::boxPlace.viewToModel()(point));
}

}   // namespace

TEST(ViewGestures, PanMovesTheLookAtPointWithTheMouse)
{
    for (const bool parallel : {false, true})
        for (const auto& [across, down] : {std::pair{40.0, 0.0}, {0.0, -25.0}, {-120.0, 77.0}}) {
            const ViewParameters view = startView(parallel), next = after(view, {Kind::pan, across, down, 1});
            const Vector<3> way = pixelOf(next, view.lookAt) - pixelOf(view, view.lookAt);
            EXPECT_NEAR(std::hypot(way[0] - across, way[1] - down), 0, 1e-8) << parallel;
            EXPECT_NEAR(((next.eye - next.lookAt) - (view.eye - view.lookAt)).length(), 0, 1e-12);
            EXPECT_FALSE(next.imageSaved);
        }
}

TEST(ViewGestures, TurnKeepsTheDistanceAndStopsAtThePoles)
{
    const ViewParameters view = startView(false);
    const SphereMarker start = eyeMarker(view);
    using Row = std::tuple<double, double, double, double>;
    // The model turns to the right with the mouse.
    for (const auto& [across, down, bearing, elevation] :
         {Row{10, 0, start.bearing - 10, start.elevation}, Row{0, 10, start.bearing, start.elevation + 10},
          Row{0, 200, start.bearing, 89.5}, Row{0, -200, start.bearing, -89.5}}) {
        const ViewParameters next = after(view, {Kind::turn, across, down, 1});
        EXPECT_NEAR(eyeMarker(next).bearing, bearing, 1e-9) << across << ", " << down;
        EXPECT_NEAR(eyeMarker(next).elevation, elevation, 1e-9) << across << ", " << down;
        EXPECT_NEAR((next.eye - next.lookAt).length(), (view.eye - view.lookAt).length(), 1e-12);
        EXPECT_EQ(next.lookAt, view.lookAt);
    }
    ViewParameters plan = view;   // steeper than a turn goes: it stays there, and comes back
    plan.eye = plan.lookAt + Vector<3>(0, -0.001, 3.0);
    EXPECT_EQ(after(plan, {Kind::turn, 0, 20, 1}), plan);
    const ViewParameters back = after(plan, {Kind::turn, 0, -20, 1});
    EXPECT_NEAR(eyeMarker(back).elevation, eyeMarker(plan).elevation - 20, 1e-9);
}

TEST(ViewGestures, EightWheelNotchesHalveTheField)
{
    ViewParameters view = startView(false);
    const double zoom = view.zoom;
    for (int i = 0; i < 8; ++i) view = after(view, {Kind::zoom, 0, wheelNotches(120, false), 1});
    EXPECT_NEAR(view.zoom, zoom / 2, 1e-12) << "away from the user: closer";
    for (int i = 0; i < 64; ++i) view = after(view, {Kind::zoom, 0, wheelNotches(-120, true), 1});
    EXPECT_NEAR(view.zoom, zoom, 1e-12) << "fine steps";
    view = after(view, {Kind::zoom, 0, wheelNotches(30, false), 1});
    EXPECT_NEAR(view.zoom, zoom * std::exp2(-1.0 / 32), 1e-12)
        << "a quarter of a notch, as touch pads report";
}

TEST(ViewGestures, AWheelNotchOverTheSlideMovesTheEyeByATenthOfItsDistance)
{
    const ViewParameters view = startView(false);
    const auto advanced = [&](double notches) { return after(view, {Kind::advance, 0, notches, 1}); };
    const EyeSlideRecord is = eyeSlideRecord(view);
    EXPECT_NEAR(eyeSlideRecord(advanced(1)).eye, is.eye - 0.1 * (is.eye - is.lookAt), 1e-12);
    EXPECT_NEAR(eyeSlideRecord(advanced(100)).eye, is.lookAt, 1e-4) << "a free wheel does not pass it";
    EXPECT_LT((advanced(-100).eye - view.lookAt).length(), 1400) << "nor go for ever";
    EXPECT_EQ(after(startView(true), {Kind::advance, 0, 1, 1}), startView(true)) << "no distance there";
}

TEST(ViewGestures, ZeroAndNonFiniteStepsReturnTheViewUnchanged)
{
    const double endless = std::numeric_limits<double>::infinity(), none = std::nan("");
    using Row = std::tuple<Kind, double, double>;
    for (const bool parallel : {false, true})
        for (const auto& [kind, across, down] :
             {Row{Kind::zoom, 0, 0}, Row{Kind::turn, 0, 0}, Row{Kind::pan, 0, 0}, Row{Kind::zoom, none, none},
              Row{Kind::turn, none, none}, Row{Kind::pan, none, none}, Row{Kind::zoom, 0, -endless},
              Row{Kind::turn, endless, 0}, Row{Kind::pan, endless, 0}, Row{Kind::pan, 0, -endless}}) {
            const ViewParameters view = startView(parallel), next = after(view, {kind, across, down, 1});
            EXPECT_TRUE(next == view && next.imageSaved)
                << static_cast<int>(kind) << ": " << across << ", " << down;
        }
}
