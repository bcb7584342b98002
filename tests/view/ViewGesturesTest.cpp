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
    for (const bool parallel : {false, true}) {
        const ViewParameters view = startView(parallel);
        for (const auto& [across, down] : {std::pair{40.0, 0.0}, {0.0, -25.0}, {-120.0, 77.0}}) {
            const ViewParameters next = after(view, {Kind::pan, across, down, 1});
            const Point<3> before = pixelOf(view, view.lookAt), now = pixelOf(next, view.lookAt);
            EXPECT_NEAR(now[0] - before[0], across, 1e-8) << parallel;
            EXPECT_NEAR(now[1] - before[1], down, 1e-8) << parallel;
            EXPECT_NEAR(((next.eye - next.lookAt) - (view.eye - view.lookAt)).length(), 0, 1e-12);
            EXPECT_FALSE(next.imageSaved);
        }
    }
}

TEST(ViewGestures, TurnKeepsTheDistanceAndStopsAtThePoles)
{
    const ViewParameters view = startView(false);
    const SphereMarker start = eyeMarker(view);
    // Columns: across, down, bearing, elevation.
    const std::tuple<double, double, double, double> cases[] = {
        {10, 0, start.bearing - 10, start.elevation},   // the model turns to the right with the mouse
        {0, 10, start.bearing, start.elevation + 10},
        {0, 200, start.bearing, 89.5},
        {0, -200, start.bearing, -89.5},
    };
    for (const auto& [across, down, bearing, elevation] : cases) {
        const ViewParameters next = after(view, {Kind::turn, across, down, 1});
        const SphereMarker is = eyeMarker(next);
        EXPECT_NEAR(is.bearing, bearing, 1e-9) << across << ", " << down;
        EXPECT_NEAR(is.elevation, elevation, 1e-9) << across << ", " << down;
        EXPECT_NEAR((next.eye - next.lookAt).length(), (view.eye - view.lookAt).length(), 1e-12);
        EXPECT_EQ(next.lookAt, view.lookAt);
    }
    ViewParameters plan = view;   // steeper than a turn goes: it stays there, and comes back
    plan.eye = plan.lookAt + Vector<3>(0, -0.001, 3.0);
    EXPECT_EQ(after(plan, {Kind::turn, 0, 20, 1}), plan);
    EXPECT_NEAR(eyeMarker(after(plan, {Kind::turn, 0, -20, 1})).elevation, eyeMarker(plan).elevation - 20,
                1e-9);
}

TEST(ViewGestures, EightWheelNotchesHalveTheField)
{
    ViewParameters view = startView(false);
    const double zoom = view.zoom;
    for (int i = 0; i < 8; ++i) view = after(view, {Kind::zoom, 0, wheelNotches(120, false), 1});
    EXPECT_NEAR(view.zoom, zoom / 2, 1e-12) << "away from the user: closer";
    for (int i = 0; i < 64; ++i) view = after(view, {Kind::zoom, 0, wheelNotches(-120, true), 1});
    EXPECT_NEAR(view.zoom, zoom, 1e-12) << "fine steps";
    EXPECT_NEAR(after(view, {Kind::zoom, 0, wheelNotches(30, false), 1}).zoom, zoom * std::exp2(-1.0 / 32),
                1e-12)
        << "a quarter of a notch, as touch pads report";
}

TEST(ViewGestures, AWheelNotchOverTheSlideMovesTheEyeByATenthOfItsDistance)
{
    const ViewParameters view = startView(false);
    const EyeSlideRecord is = eyeSlideRecord(view);
    const double way = is.eye - is.lookAt;
    EXPECT_NEAR(eyeSlideRecord(after(view, {Kind::advance, 0, 1, 1})).eye, is.eye - 0.1 * way, 1e-12);
    EXPECT_NEAR(eyeSlideRecord(after(view, {Kind::advance, 0, 100, 1})).eye, is.lookAt, 1e-4)
        << "a wheel that spins freely does not pass the look-at point";
    EXPECT_LT((after(view, {Kind::advance, 0, -100, 1}).eye - view.lookAt).length(), 1400)
        << "nor go for ever";
    EXPECT_EQ(after(startView(true), {Kind::advance, 0, 1, 1}), startView(true))
        << "there the eye has no distance";
}

TEST(ViewGestures, ZeroAndNonFiniteStepsReturnTheViewUnchanged)
{
    const double endless = std::numeric_limits<double>::infinity(), none = std::nan("");
    for (const bool parallel : {false, true}) {
        const ViewParameters view = startView(parallel);
        for (const Kind kind : {Kind::zoom, Kind::turn, Kind::pan})
            for (const auto& [across, down] :
                 {std::pair{0.0, 0.0}, {endless, 0.0}, {none, none}, {0.0, -endless}}) {
                if (kind == Kind::turn && std::isinf(down)) continue;     // goes to the pole
                if (kind == Kind::zoom && std::isinf(across)) continue;   // has no across
                const ViewParameters next = after(view, {kind, across, down, 1});
                EXPECT_EQ(next, view) << static_cast<int>(kind) << ": " << across << ", " << down;
                EXPECT_TRUE(next.imageSaved);
            }
    }
}
