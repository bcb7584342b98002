#include "render/SamePositions.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace belvor {
namespace {

using Points = std::vector<Point<3>>;

/// Heights over `rows` rows of `columns` points: row by row, as `at` gives the place in its row.
template <class At>
Points grid(int rows, int columns, At at)
{
    Points points;
    for (int y = 0; y < rows; ++y)
        for (int i = 0; i < columns; ++i) points.push_back(at(y, i, columns));
    return points;
}

Points with(Points points, std::size_t index, const Point<3>& point)
{
    points[index] = point;
    return points;
}

TEST(SamePositions, AreTheFirstVerticesAtEach)
{
    constexpr double nan = std::numeric_limits<double>::quiet_NaN(),
                     inf = std::numeric_limits<double>::infinity();
    const Points rising = grid(40, 30, [](int y, int i, int) { return Point<3>(i, y, i % 3); }),
                 falling = grid(40, 30, [](int y, int i, int) { return Point<3>(-y, 7.0, -i); }),
                 snake = grid(40, 30, [](int y, int i, int n) { return Point<3>(0, y % 2 ? n - i : i, y); });
    Points twice = rising, crowd, signs;
    twice.insert(twice.end(), rising.begin(), rising.end());
    std::mt19937 random(3);
    for (int i = 0; i < 3000; ++i) crowd.emplace_back(random() % 12, random() % 12, random() % 12);
    for (const double x : {-2.0, -0.0, 0.0, 1.0}) signs.emplace_back(x, 0.0, 0.0);
    const struct {
        const char* what;
        Points points;
    } cases[] = {
        {"nothing", {}},
        {"rising", rising},
        {"falling", falling},
        {"snake", snake},
        {"twice", twice},
        {"crowd", crowd},
        {"signs of zero", signs},
        {"the last again", with(rising, rising.size() - 1, rising[rising.size() - 2])},
        {"an earlier row again", with(rising, rising.size() - 1, rising[17])},
        {"not a number in the row", with(rising, 100, {nan, 3.0, 0.0})},
        {"not a number as height", with(rising, 100, {rising[100][0], rising[100][1], nan})},
        {"infinite last", with(rising, rising.size() - 1, {inf, 39.0, 0.0})},
        {"infinite first", with(rising, 0, {-inf, 0.0, 0.0})},
        {"not a number alone", {{nan, 0.0, 0.0}}},
    };
    for (const auto& [what, points] : cases) {
        const Handle<Model> model = makeHandle<Model>();
        model->addVertices(points);
        Pauses pauses({});
        const SamePositions found(*model, pauses);
        std::size_t wrong = 0;
        for (std::size_t i = 0; i < points.size(); ++i) {
            const bool finite = std::isfinite(points[i][0] + points[i][1] + points[i][2]);
            const auto first = std::find(points.begin(), points.end(), points[i]) - points.begin();
            wrong += found.data()[i] != (finite ? static_cast<std::uint32_t>(first) : SamePositions::none);
        }
        EXPECT_EQ(wrong, 0u) << what;
    }
}

}   // namespace
}   // namespace belvor
