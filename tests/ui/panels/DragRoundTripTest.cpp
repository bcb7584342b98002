#include "ui/panels/PlanGeometry.h"
#include "ui/panels/SlideScale.h"
#include "ui/panels/SphereProjection.h"
#include "view/PanelRecords.h"
#include "view/ViewCommands.h"
#include "view/ViewEdits.h"

#include <gtest/gtest.h>

#include <random>

using namespace belvor;

// A drag, the request it makes, the view that comes of it, and what the panel then shows: the
// marker must stand where the mouse let go of it.

namespace {

std::mt19937 engine{5};

ViewParameters randomView()
{
    const auto coordinate = [] { return std::uniform_real_distribution(-3.0, 3.0)(engine); };
    ViewParameters view = wholeModel(freshView(), ImageSize{});
    view.eye = {coordinate(), coordinate(), coordinate()};
    view.lookAt = {coordinate(), coordinate(), coordinate()};
    return view;
}

int pixel(int below) { return std::uniform_int_distribution(0, below - 1)(engine); }

}   // namespace

TEST(DragRoundTrip, PlanAndElevationShowTheMarkerExactlyWhereItWasReleased)
{
    for (int i = 0; i < 2000; ++i) {
        ViewParameters view = randomView();
        view.parallel = i % 16 == 2;   // its eye is shown near the model: only the look-at point is exact
        const Thumbnail panel = i % 2 == 0 ? Thumbnail::plan : Thumbnail::elevation;
        const auto drag = static_cast<MarkerDrag>(1 + i / 2 % 4);
        const ViewMarkers asked =
            draggedMarkers(viewMarkers(view, panel), drag, {115, 115}, pixel(115), pixel(115));
        ViewMarkers shown = viewMarkers(moveMarkers(view, panel, asked), panel);
        if (view.parallel) shown.eyeH = asked.eyeH, shown.eyeV = asked.eyeV;
        EXPECT_EQ(shown, asked) << i;
    }
}

TEST(DragRoundTrip, TheSlideShowsTheEyeWithinAPixelOfItsRelease)
{
    const SlideScale scale({43, 405}, 17);
    for (int i = 0; i < 500; ++i) {
        const ViewParameters view = randomView();
        const EyeSlideRecord shown = eyeSlideRecord(view);
        // Below the look-at point: above it the view turns round, and the slide with it.
        const int lookAt = scale.toPixel(shown.lookAt), room = std::max(scale.bottom - lookAt - 1, 1),
                  y = lookAt + 1 + pixel(room);
        const EyeSlideRecord asked = draggedSlide(shown, MarkerDrag::eye, scale, y),
                             after = eyeSlideRecord(moveAlongSight(view, asked));
        EXPECT_NEAR(scale.toPixel(after.eye), y, 1) << i;
        EXPECT_NEAR(after.lookAt, shown.lookAt, 1e-9) << i;
    }
}

TEST(DragRoundTrip, TheSphereShowsTheEyeWhereItWasReleased)
{
    const SphereDisc disc({115, 147});
    for (int i = 0; i < 2000; ++i) {
        const SphereDirection asked = disc.toDirection(pixel(115), pixel(115), {i % 3 == 0, i % 2 == 0});
        const SphereMarker shown = eyeMarker(turn(randomView(), {asked.bearing, asked.elevation, 0}));
        const PixelPoint ghost = disc.toPixel(asked), marker = disc.toPixel({shown.bearing, shown.elevation});
        // Whole degrees of elevation are drawn.
        EXPECT_LE(std::max(std::abs(marker.x - ghost.x), std::abs(marker.y - ghost.y)), 1) << i;
        EXPECT_EQ(shown.elevation < -1e-9, asked.elevation < -1e-9) << i;
    }
}
