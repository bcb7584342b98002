#include "render/TinyLine.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>
#include <vector>

namespace belvor {
namespace {

/// The pixels of a segment and the integers that it crosses, counted one by one.
struct Counted {
    int columns = 0, rows = 0;
    std::vector<TinyLine::Pixel> pixels;
};

TinyLine::Pixel pixelAt(const Point<3>& from, const Point<3>& to, int axis, double value)
{
    const double t = (value - from[axis]) / (to[axis] - from[axis]);
    TinyLine::Pixel pixel{};
    for (int i = 0; i < 3; ++i) pixel.point[i] = i == axis ? value : from[i] + (to[i] - from[i]) * t;
    const int other = 1 - axis;
    const double nearer = std::floor(pixel.point[other] + 0.5), below = std::floor(pixel.point[other]);
    (axis == 0 ? pixel.column : pixel.row) = static_cast<int>(value);
    (axis == 0 ? pixel.row : pixel.column) = static_cast<int>(nearer);
    if (below != pixel.point[other]) pixel.toOther[other] = nearer == below ? 1 : -1;
    return pixel;
}

Counted countedOf(const Point<3>& from, const Point<3>& to)
{
    Counted counted;
    for (int axis = 0; axis < 2; ++axis)
        for (double i = -40.0; i <= 40.0; ++i)
            if (i >= std::min(from[axis], to[axis]) && i <= std::max(from[axis], to[axis])) {
                ++(axis == 0 ? counted.columns : counted.rows);
                if (from[axis] != to[axis]) counted.pixels.push_back(pixelAt(from, to, axis, i));
            }
    return counted;
}

std::string text(const TinyLine::Pixel& p)
{
    std::string all;
    for (const double value : {p.point[0], p.point[1], p.point[2]}) all += std::to_string(value) + ' ';
    for (const int value : {p.column, p.row, p.toOther[0], p.toOther[1]}) all += std::to_string(value) + ' ';
    return all;
}

TEST(TinyLine, HasThePixelOfTheOneColumnOrRowThatItCrossesElseOfItsMiddle)
{
    std::mt19937 random(5);
    int nothing = 0, one = 0, more = 0;
    for (int i = 0; i < 200000; ++i) {
        // On a grid of sixteenths ends lie on sample points, and crossings halfway between two.
        const auto near = [&](double middle, int reach) {
            return middle
                   + (static_cast<int>(random() % static_cast<unsigned>(2 * reach + 1)) - reach) / 16.0;
        };
        const Point<3> from(near(0.0, 400), near(0.0, 400), near(-50.0, 400));
        const Point<3> to(near(from[0], 20), near(from[1], 20), near(-50.0, 400));
        const Counted counted = countedOf(from, to);
        const TinyLine line(from, to);
        const bool onGrid = std::floor(from[0]) == from[0] || std::floor(from[1]) == from[1]
                            || std::floor(to[0]) == to[0] || std::floor(to[1]) == to[1];
        const int crossed = counted.columns + counted.rows;
        EXPECT_EQ(line.crossesOneAtMost(), crossed == 0 || (crossed == 1 && !onGrid));
        EXPECT_EQ(line.crossesOne(), crossed == 1 && !onGrid);
        ++(crossed == 0 ? nothing : line.crossesOne() ? one : more);
        EXPECT_EQ(line.isMostlyAcross(), std::abs(to[0] - from[0]) >= std::abs(to[1] - from[1]));
        if (line.crossesOne()) {
            EXPECT_EQ(text(line.pixel()), text(counted.pixels[0]));
        } else if (crossed == 0) {
            TinyLine::Pixel middle{};
            for (int axis = 0; axis < 3; ++axis) middle.point[axis] = (from[axis] + to[axis]) * 0.5;
            middle.column = static_cast<int>(std::floor(middle.point[0] + 0.5));
            middle.row = static_cast<int>(std::floor(middle.point[1] + 0.5));
            EXPECT_EQ(text(line.pixel()), text(middle));
        }
        if (HasFailure()) break;
    }
    EXPECT_GT(std::min({nothing, one, more}), 10000);
}

TEST(TinyLine, LeavesWhatLiesFarAwayOrNowhereToOthers)
{
    const double infinite = HUGE_VAL, undefined = std::nan("");
    for (const double far : {0x1p29, 0x1p31 + 0.25, 0x1p51 + 0.5, 1e300, infinite, undefined})
        for (const double value : {far, -far})
            for (const int axis : {0, 1}) {
                Point<3> from(0.25, 0.25, -1.0), to(0.75, 0.75, -1.0);
                from[axis] = value;
                EXPECT_FALSE(TinyLine(from, to).crossesOneAtMost()) << far;
                EXPECT_FALSE(TinyLine(to, from).crossesOneAtMost()) << far;
                to[axis] = value;
                EXPECT_FALSE(TinyLine(from, to).crossesOneAtMost()) << far;
            }
}

}   // namespace
}   // namespace belvor
