#include "render/TinyLine.h"

#include <gtest/gtest.h>

#include <cmath>

namespace belvor {
namespace {

// Which pixel any other has is worked out in tests/picture.
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
