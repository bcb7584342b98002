#include "ui/panels/PlanGeometry.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace belvor;

namespace {

constexpr PixelSize client{115, 115};

}   // namespace

TEST(PlanGeometry, MapsPanelUnitsToPixels)
{
    const struct { double h, v; PixelPoint in115, in128; } cases[] = {
        {0, 0, {58, 58}, {64, 64}},
        {-0.5, 0.5, {29, 86}, {32, 96}},
        {1, 1, {115, 115}, {128, 128}},
        {-1, -1, {0, 0}, {0, 0}},
        {0.999, -0.999, {115, 0}, {128, 0}},
        {1e9, -1e9, {16000, -16000}, {16000, -16000}},   // a far eye overflows no int
    };
    for (const auto& c : cases) {
        EXPECT_EQ(panelToPixel(c.h, c.v, client), c.in115) << c.h << ", " << c.v;
        EXPECT_EQ(panelToPixel(c.h, c.v, {128, 128}), c.in128) << c.h << ", " << c.v;
    }
}

TEST(PlanGeometry, MapsPixelsBackWithHalfAPixelBetween)
{
    const struct { int x, y; double h, v; } cases[] = {
        {57, 57, -0.00869565217391299, -0.00869565217391299}, {58, 58, 0.00869565217391299, 0.00869565217391299},
        {0, 0, -1, -1}, {115, 115, 1, 1}, {28, 87, -0.513043478260869, 0.513043478260869},
        {-20, 200, -1.34782608695652, 2.47826086956522},   // released outside
    };
    for (const auto& c : cases) {
        const PanelPoint p = pixelToPanel(c.x, c.y, client);
        EXPECT_NEAR(p.h, c.h, 1e-12) << c.x;
        EXPECT_NEAR(p.v, c.v, 1e-12) << c.y;
    }
}

TEST(PlanGeometry, PressTakesTheMarkerWithinTenPixels)
{
    const ViewMarkers markers{-0.5, 0.5, 0, 0, false};   // eye at (29, 86), look-at point at (58, 58)
    const struct { int x, y; bool shift; MarkerDrag drag; } cases[] = {
        {29, 86, false, MarkerDrag::eye},
        {38, 86, false, MarkerDrag::eye},
        {39, 86, false, MarkerDrag::none},   // exactly ten
        {36, 93, false, MarkerDrag::eye},
        {29, 86, true, MarkerDrag::eyeKeepingDistance},
        {58, 49, false, MarkerDrag::lookAt},
        {58, 48, false, MarkerDrag::none},
        {58, 58, true, MarkerDrag::lookAtKeepingDistance},
        {100, 10, true, MarkerDrag::none},
    };
    for (const auto& c : cases) EXPECT_EQ(hitMarker(markers, client, c.x, c.y, c.shift), c.drag) << c.x << ", " << c.y;
    const ViewMarkers together{0.05, 0, 0, 0, false};
    EXPECT_EQ(hitMarker(together, client, 58, 58, false), MarkerDrag::eye) << "the eye wins";
}

TEST(PlanGeometry, DragAsksForWhatItsRubberLineShows)
{
    const ViewMarkers markers{-0.5, 0.5, 0, 0, true};
    const PanelPoint to = pixelToPanel(90, 20, client);
    const struct { MarkerDrag drag; PixelLine line; ViewMarkers asked; } cases[] = {
        {MarkerDrag::eye, {{58, 58}, {90, 20}}, {to.h, to.v, 0, 0, true}},
        {MarkerDrag::lookAt, {{29, 86}, {90, 20}}, {-0.5, 0.5, to.h, to.v, true}},
        {MarkerDrag::eyeKeepingDistance, {{119, -8}, {90, 20}}, {to.h, to.v, to.h + 0.5, to.v - 0.5, true}},
        {MarkerDrag::lookAtKeepingDistance, {{61, 48}, {90, 20}}, {-0.5 + to.h, 0.5 + to.v, to.h, to.v, true}},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(rubberLine(markers, c.drag, client, 90, 20), c.line) << static_cast<int>(c.drag);
        EXPECT_EQ(draggedMarkers(markers, c.drag, client, 90, 20), c.asked) << static_cast<int>(c.drag);
    }
}
