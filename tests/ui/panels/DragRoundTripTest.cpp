#include "app/state/PanelRecords.h"
#include "app/state/ViewCommands.h"
#include "app/state/ViewEdits.h"
#include "ui/panels/PlanGeometry.h"
#include "ui/panels/SlideScale.h"
#include "ui/panels/SphereProjection.h"

#include <gtest/gtest.h>

#include <random>

using namespace belvor;

// A drag, the request it makes, the view that comes of it, and what the panel then shows: the
// marker must stand where the mouse let go of it.

namespace {

class Random {
public:
    ViewParameters view()
    {
        ViewParameters view = wholeModel(freshView(), ImageSize{});
        view.eye = {coordinate(), coordinate(), coordinate()};
        view.lookAt = {coordinate(), coordinate(), coordinate()};
        return view;
    }
    int pixel(int below) { return std::uniform_int_distribution(0, below - 1)(engine); }

private:
    double coordinate() { return std::uniform_real_distribution(-3.0, 3.0)(engine); }

    std::mt19937 engine{5};
};

constexpr PixelSize square{115, 115};

}   // namespace

TEST(DragRoundTrip, PlanAndElevationShowExactlyWhatWasAskedFor)
{
    Random random;
    for (int i = 0; i < 2000; ++i) {
        const ViewParameters view = random.view();
        const Thumbnail panel = i % 2 == 0 ? Thumbnail::plan : Thumbnail::elevation;
        const MarkerDrag drag = static_cast<MarkerDrag>(1 + i / 2 % 4);
        const ViewMarkers asked = draggedMarkers(viewMarkers(view, panel), drag, square, random.pixel(115), random.pixel(115));
        EXPECT_EQ(viewMarkers(moveMarkers(view, panel, asked), panel), asked) << i;
    }
}

TEST(DragRoundTrip, ALookAtPointOfAParallelViewStandsWhereItWasDropped)
{
    Random random;
    for (int i = 0; i < 500; ++i) {
        ViewParameters view = random.view();
        view.parallel = true;
        const int x = random.pixel(115), y = random.pixel(115);
        const ViewMarkers asked = draggedMarkers(viewMarkers(view, Thumbnail::plan), MarkerDrag::lookAt, square, x, y);
        const ViewMarkers shown = viewMarkers(moveMarkers(view, Thumbnail::plan, asked), Thumbnail::plan);
        EXPECT_EQ(shown.lookAtH, asked.lookAtH);
        EXPECT_EQ(shown.lookAtV, asked.lookAtV);
    }
}

TEST(DragRoundTrip, TheSlideShowsTheEyeWithinAPixel)
{
    const SlideScale scale({43, 405}, 17);
    Random random;
    for (int i = 0; i < 500; ++i) {
        const ViewParameters view = random.view();
        const EyeSlideRecord shown = eyeSlideRecord(view);
        // Below the look-at point: above it the view turns round, and the slide with it.
        const int lookAt = scale.toPixel(shown.lookAt), room = scale.bottom - lookAt - 1;
        const int y = lookAt + 1 + random.pixel(std::max(room, 1));
        const EyeSlideRecord after = eyeSlideRecord(moveAlongSight(view, draggedSlide(shown, MarkerDrag::eye, scale, y)));
        EXPECT_NEAR(scale.toPixel(after.eye), y, 1) << i;
        EXPECT_NEAR(after.lookAt, shown.lookAt, 1e-9) << i;
    }
}

TEST(DragRoundTrip, TheSphereShowsTheEyeAtItsGhost)
{
    const SphereDisc disc({115, 147});
    Random random;
    for (int i = 0; i < 2000; ++i) {
        const ViewParameters view = random.view();
        const SphereKeys keys{i % 3 == 0, i % 2 == 0};
        const SphereDirection asked = disc.toDirection(random.pixel(115), random.pixel(115), keys);
        const SphereMarker shown = eyeMarker(turn(view, {asked.bearing, asked.elevation, 0}));
        const PixelPoint ghost = disc.toPixel(asked), marker = disc.toPixel({shown.bearing, shown.elevation});
        EXPECT_NEAR(marker.x, ghost.x, 1) << i;   // whole degrees of elevation are drawn
        EXPECT_NEAR(marker.y, ghost.y, 1) << i;
        EXPECT_EQ(shown.elevation < -1e-9, asked.elevation < -1e-9) << i;
    }
}
