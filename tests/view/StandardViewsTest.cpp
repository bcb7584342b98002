#include "view/StandardViews.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

using namespace belvor;

namespace {

constexpr ImageSize size{800, 600};

struct Body {
    const char* name;
    Point<3> lo, hi;
};

constexpr Body bodies[] = {
    {"a house", {-3, 2, 0}, {9, 12, 7}},
    {"a map far from the origin", {4567123.4, 5234567.8, 310.2}, {4567180.1, 5234601, 319}},
    {"a flat drawing", {0, 0, 0}, {420, 297, 0}},
    {"a point", {5, 5, 5}, {5, 5, 5}},
    {"tiny", {1e-9, 1e-9, 0}, {3e-9, 2e-9, 1e-9}},
    {"large", {-1e75, 0, 0}, {1e75, 1e74, 1e70}},
};

Extent<3> boxOf(const Body& body)
{
    Extent<3> box = Extent<3>::nothing();
    return (box += body.lo) += body.hi;
}

ModelPlace placeOf(const Body& body)
{
    const Vector<3> half = (body.hi - body.lo) * 0.5;
    return {body.lo + half, half.length()};
}

}   // namespace

TEST(StandardViews, LookFromTheNamedSideAndShowTheWholeModel)
{
    // Columns: view, name, side, right, up.
    const std::tuple<StandardView, const char*, Vector<3>, Vector<3>, Vector<3>> cases[] = {
        {StandardView::plan, "plan", {0, 0, 1}, {1, 0, 0}, {0, 1, 0}},
        {StandardView::below, "BELOW", {0, 0, -1}, {1, 0, 0}, {0, -1, 0}},
        {StandardView::front, "front", {0, -1, 0}, {1, 0, 0}, {0, 0, 1}},
        {StandardView::back, "back", {0, 1, 0}, {-1, 0, 0}, {0, 0, 1}},
        {StandardView::left, "left", {-1, 0, 0}, {0, -1, 0}, {0, 0, 1}},
        {StandardView::right, "Right", {1, 0, 0}, {0, 1, 0}, {0, 0, 1}},
        {StandardView::isoNE, "iso-ne", {1, 1, 1}, {-1, 1, 0}, {-1, -1, 2}},
        {StandardView::isoNW, "iso-nw", {-1, 1, 1}, {-1, -1, 0}, {1, -1, 2}},
        {StandardView::isoSE, "iso-se", {1, -1, 1}, {1, 1, 0}, {-1, 1, 2}},
        {StandardView::isoSW, "ISO-SW", {-1, -1, 1}, {1, -1, 0}, {1, 1, 2}},
    };
    for (const auto& [wantedView, name, side, right, up] : cases) {
        EXPECT_EQ(standardViewNamed(name), wantedView);
        for (const Body& body : bodies) {
            SCOPED_TRACE(std::string(name) + ", " + body.name);
            const ModelPlace place = placeOf(body);
            const ViewParameters view = standardView(freshView(), wantedView, boxOf(body), place, size);
            ViewParameters read = view;
            ASSERT_TRUE(read.parse(view.text(place.centre, place.radius), place.centre, place.radius));
            EXPECT_EQ(read, view) << "a saved view is the view";
            const Handle<Camera> camera = buildScene(view, place, size, size.width, size.height).camera;
            const double coarse = body.lo[0] < 1e6 ? 1e-5 : 3e-5;
            EXPECT_LT((camera->frame.right - right.unit()).length(), coarse);
            EXPECT_LT((camera->frame.up - up.unit()).length(), coarse);
            EXPECT_LT((camera->frame.forward + side.unit()).length(), coarse);
            double reach = 0.0;   // of the corners from the middle, as a share of half the picture
            for (int corner = 0; corner < 8; ++corner) {
                const auto at = [&](int axis) { return (corner >> axis & 1 ? body.hi : body.lo)[axis]; };
                const Point<3> p = camera->project({at(0), at(1), at(2)});
                reach = std::max({reach, std::fabs(p[0] - 400) / 400, std::fabs(p[1] - 300) / 300});
            }
            EXPECT_NEAR(reach, body.lo == body.hi ? 0 : 1 / 1.02, body.lo == body.hi ? 1e-3 : 1e-5);
        }
    }
    EXPECT_FALSE(standardViewNamed("planx") || standardViewNamed("") || standardViewNamed("whole"));
}

TEST(StandardViews, AnEmptyModelHasAFiniteViewAndAHugeOneHasNone)
{
    const ViewParameters empty =
        standardView(freshView(), StandardView::isoNE, Extent<3>::nothing(), {}, size);
    EXPECT_TRUE(empty.finite() && empty.zoom > 0.0);
    const double most = std::numeric_limits<double>::max();
    const Body all{"", {-most, -most, -most}, {most, most, most}};
    EXPECT_FALSE(
        standardView(freshView(), StandardView::plan, boxOf(all), {{}, most}, size).finiteInModel({}, most));
}
