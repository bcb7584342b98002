#include "render/EdgeTable.h"
#include "render/Spans.h"

#include <gtest/gtest.h>

#include <cmath>
#include <ostream>

namespace belvor {

void PrintTo(const Columns& columns, std::ostream* out) { *out << columns.first << ".." << columns.end; }

TEST(Spans, CoverColumnsAboveTheLeftEndUpToTheRight)
{
    const double nan = std::nan("");
    const struct { const char* why; double left, right; int first, end; } cases[] = {
        {"both edges on sample points", 1.0, 4.0, 2, 5},
        {"between two sample points: no pixel", 2.1, 2.9, 3, 3},
        {"left edge outside by under a pixel", -0.5, 2.5, 1, 3},
        {"left edge at -1", -1.0, 2.5, 0, 3},
        {"left edge beyond all integers", -1e300, 2.5, 0, 3},
        {"right edge at 0 leaves pixel 0 out", -5, 0.0, 0, 0},
        {"starts on the last column", 7.0, 9.0, 0, 0},
        {"starts just before the last column", 6.9, 9.0, 7, 8},
        {"right edge beyond all integers", 2.0, 1e300, 3, 8},
        {"ends just inside", 2.0, 7.5, 3, 8},
        {"left is not a number", nan, 3, 0, 0},
        {"right is not a number", 1, nan, 0, 0},
    };
    for (const auto& c : cases) EXPECT_EQ(coveredColumns(c.left, c.right, 8), (Columns{c.first, c.end})) << c.why;
}

TEST(Spans, OpenOnOneSideReachTheBorder)
{
    const struct { double x; Columns upTo, from; } cases[] = {
        {2.5, {0, 3}, {3, 8}},  {-0.5, {0, 1}, {1, 8}}, {-1.0, {0, 0}, {0, 8}}, {-1e300, {0, 0}, {0, 8}},
        {7.0, {0, 8}, {0, 0}},  {7.5, {0, 8}, {0, 0}},  {6.5, {0, 7}, {7, 8}},  {1e300, {0, 8}, {0, 0}},
        {std::nan(""), {0, 0}, {0, 0}},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(columnsUpTo(c.x, 8), c.upTo) << c.x;
        EXPECT_EQ(columnsFrom(c.x, 8), c.from) << c.x;
    }
}

TEST(ActiveRows, FollowTheEdgeInFrontOfTheEye)
{
    constexpr double front = -1, behind = 1;
    const struct { const char* why; double y0, z0, y1, z1; int first, last; } cases[] = {
        {"ends on rows: below the upper, down to the lower", 1, front, 4, front, 2, 4},
        {"upper end less than a row above the picture", -0.5, front, 4.5, front, 0, 4},
        {"upper end on the first row", 0, front, 4.5, front, 1, 4},
        {"far above to far below", -1e300, front, 1e300, front, 0, 9},
        {"ends on the first row", -5, front, 0, front, 0, 0},
        {"starts on the last row", 9, front, 20, front, 1, 0},
        {"starts just above the last row", 8.9, front, 20, front, 9, 9},
        {"horizontal", 3, front, 3, front, 1, 0},
        {"horizontal across the eye plane", 3, front, 3, behind, 1, 0},
        {"upper behind, lower on the last row", 1, behind, 9, front, 1, 0},
        {"not a number", std::nan(""), front, 4, front, 1, 0},
    };
    for (const auto& c : cases) {
        const EdgeRows rows = activeRows(c.y0, c.z0, c.y1, c.z1, 10);
        if (c.first > c.last) {
            EXPECT_GT(rows.first, rows.last) << c.why;
        } else {
            EXPECT_EQ(rows.first, c.first) << c.why;
            EXPECT_EQ(rows.last, c.last) << c.why;
        }
    }
}

}   // namespace belvor
