#include "ui/panels/PlanGeometry.h"

#include <gtest/gtest.h>

#include <utility>

using namespace belvor;

constexpr PixelSize client{115, 115};

TEST(PlanGeometry, APressHitsTheMarkerWithinTenPixels)
{
    const ViewMarkers markers{-0.5, 0.5, 0, 0, false};   // eye at (29, 86), look-at point at (58, 58)
    EXPECT_EQ(hitMarker(markers, client, 29, 86, true), MarkerDrag::eyeKeepingDistance);
    EXPECT_EQ(hitMarker(markers, client, 58, 58, true), MarkerDrag::lookAtKeepingDistance);
    EXPECT_EQ(hitMarker(markers, client, 58, 58, false), MarkerDrag::lookAt);
    for (const auto& [dotsPerInch, reach] : {std::pair{96, 10}, {144, 15}, {192, 20}}) {
        EXPECT_EQ(hitMarker(markers, client, 29 - reach + 1, 86, false, {dotsPerInch}), MarkerDrag::eye);
        EXPECT_EQ(hitMarker(markers, client, 29 - reach, 86, false, {dotsPerInch}), MarkerDrag::none);
    }
    EXPECT_EQ(hitMarker(ViewMarkers{0.05, 0, 0, 0, false}, client, 58, 58, false), MarkerDrag::eye)
        << "the eye wins";
    EXPECT_EQ(panelToPixel(1e9, -1e9, client), (PixelPoint{16000, -16000})) << "a far eye overflows no int";
}

TEST(PlanGeometry, ADragRequestsWhatItsRubberLineShows)
{
    const ViewMarkers markers{-0.5, 0.5, 0, 0, true};
    const PanelPoint to = pixelToPanel(90, 20, client);
    const std::tuple<MarkerDrag, PixelLine, ViewMarkers> cases[] = {
        {MarkerDrag::eye, {{58, 58}, {90, 20}}, {to.h, to.v, 0, 0, true}},
        {MarkerDrag::lookAt, {{29, 86}, {90, 20}}, {-0.5, 0.5, to.h, to.v, true}},
        {MarkerDrag::eyeKeepingDistance, {{119, -8}, {90, 20}}, {to.h, to.v, to.h + 0.5, to.v - 0.5, true}},
        {MarkerDrag::lookAtKeepingDistance, {{61, 48}, {90, 20}}, {to.h - 0.5, to.v + 0.5, to.h, to.v, true}},
    };
    for (const auto& [drag, line, asked] : cases) {
        EXPECT_EQ(rubberLine(markers, drag, client, 90, 20), line) << static_cast<int>(drag);
        EXPECT_EQ(draggedMarkers(markers, drag, client, 90, 20), asked) << static_cast<int>(drag);
    }
}

TEST(PlanGeometry, KeysMoveAMarkerByWholePixels)
{
    const ViewMarkers markers{-0.501, 0.5, 0.01, 0, true};
    const ViewMarkers asked = nudgedMarkers(markers, MarkerDrag::eye, client, {1, -8});
    EXPECT_NEAR(asked.eyeH, -0.501 + 2.0 / 115, 1e-15);
    EXPECT_NEAR(asked.eyeV, 0.5 - 16.0 / 115, 1e-15);
    EXPECT_EQ(asked.lookAtH, markers.lookAtH);
    const PixelPoint before = eyePixel(markers, client), after = eyePixel(asked, client);
    EXPECT_EQ(after, (PixelPoint{before.x + 1, before.y - 8}));
    EXPECT_EQ(nudgedMarkers(markers, MarkerDrag::eye, {0, 0}, {1, 1}), markers) << "nothing to see";
}
