#include "scene/Camera.h"
#include "tests/support/Models.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

using namespace belvor;
using namespace belvor::test;

// Where points of a model are seen, how deep, and which side of a plane, is worked out in tests/picture.

TEST(Camera, PlanLooksDownAndElevationLooksLevel)
{
    const std::pair<Thumbnail, Point<3>> cases[] = {
        {Thumbnail::plan, {65.1837607049822, 42.132478590035596, -51.8300321149466}},
        {Thumbnail::elevation, {65.1837607049822, 34.4487178850534, -13.411228590035593}}};
    for (const auto& [side, wanted] : cases) {
        const ModelPlace place{{1, 2, 3}, 3.74165738677394};
        const Point<3> seen = buildThumbnailScene(side, place, 115, 115).camera->project({2, 4, 6});
        EXPECT_LT((seen - wanted).length(), 1e-10) << wanted[1];
    }
}

TEST(Camera, StaysFiniteForViewsWithoutSize)
{
    const ModelPlace place{{5, 5, 5}, 0.0};   // a model of one point
    // Columns: why, eye, lookAt, zoom.
    const std::tuple<const char*, Point<3>, Point<3>, double> cases[] = {
        {"zoom below 0", {1, 1, 1}, {0, 0, 0}, -1.0},
        {"smallest zoom", {1, 1, 1}, {0, 0, 0}, 5e-324},
        {"eye at the look-at point", {1, 1, 1}, {1, 1, 1}, 0.8},
        {"eye in the point", {0, 0, 0}, {0, 1, 0}, 0.8},
    };
    for (const auto& [why, eye, lookAt, zoom] : cases)
        for (const bool parallel : {false, true}) {
            const ViewParameters view{.eye = eye, .lookAt = lookAt, .zoom = zoom, .parallel = parallel};
            const Handle<Camera> camera = buildScene(view, place, {800, 600}, 80, 60).camera;
            const Point<3> screen = camera->project({5, 5, 5});
            EXPECT_TRUE(std::isfinite(screen[0]) && std::isfinite(screen[1]) && std::isfinite(screen[2]))
                << why;
            EXPECT_TRUE(camera->scale > 0.0 && std::isfinite(camera->scale)) << why;
        }
}

TEST(Camera, DepthCodesKeepTheirLow32Bits)
{
    for (const bool parallel : {false, true}) {
        const Handle<Model> model = thingsModel(boxText);
        ViewParameters view = freshView();
        view.parallel = parallel;
        const Handle<Camera> camera = buildScene(view, placeOf(*model), {80, 60}, 80, 60).camera;
        const auto depthOf = [&](double code) {
            const double distance = code / camera->depthScale + camera->near;
            return parallel ? (distance - camera->far) * camera->scale : -camera->scale / distance;
        };
        // A row within the range, and one that leaves it; halves, so that rounding in `depthOf` changes no
        // code.
        const std::vector<double> rows[] = {
            {0.5, 1.5, 12345.5, 2147483647.5, 2147483648.5, 3e9 + 0.5, 4294967293.5},
            {0.5, 3e9 + 0.5, -2.5, -3e9 - 0.5, 4294967296.5, 1e12 + 0.5}};
        for (const std::vector<double>& row : rows) {
            std::vector<double> depths;
            for (const double code : row) depths.push_back(depthOf(code));
            std::vector<std::uint32_t> codes(row.size());
            camera->depthCodes(depths, codes.data());
            for (std::size_t i = 0; i < row.size(); ++i)
                EXPECT_EQ(codes[i], static_cast<std::uint32_t>(static_cast<std::int64_t>(row[i])))
                    << row[i] << ' ' << parallel;
        }
        const double notFinite[] = {std::nan(""), parallel ? -HUGE_VAL : 0.0};
        std::uint32_t codes[2] = {1, 1};
        camera->depthCodes(notFinite, codes);
        EXPECT_EQ(codes[0] + codes[1], 0u) << "no number; infinite";
    }
}
