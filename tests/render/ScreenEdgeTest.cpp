#include "render/ScreenEdge.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace belvor;

// The ends that random scenes never meet; those between them are compared in tests/picture.
TEST(ActiveRows, EndWhereAnEdgeEndsOnARowOrBeyondAllRows)
{
    constexpr double front = -1, behind = 1;
    // Columns: why, y0, z0, y1, z1, first, last.
    const std::tuple<const char*, double, double, double, double, int, int> cases[] = {
        // `first` above `last`: never
        {"starts on the last row", 9, front, 20, front, 1, 0},
        {"far above to far below", -1e300, front, 1e300, front, 0, 9},
        {"upper end behind the eye, lower on the first row", -4, behind, 0, front, 1, 9},
        {"upper end behind the eye, lower on the last row", 1, behind, 9, front, 1, 0},
        {"lower end behind the eye, upper on the first row", 0, front, 7, behind, 0, 0},
        {"horizontal across the eye plane", 3, front, 3, behind, 1, 0},
        {"not a number", std::nan(""), front, 4, front, 1, 0},
    };
    for (const auto& [why, y0, z0, y1, z1, first, last] : cases) {
        const EdgeRows rows = activeRows(y0, z0, y1, z1, 10);
        EXPECT_EQ(rows.none(), first > last) << why;
        EXPECT_TRUE(first > last || (rows.first == first && rows.last == last))
            << why << ": " << rows.first << " to " << rows.last;
    }
}
