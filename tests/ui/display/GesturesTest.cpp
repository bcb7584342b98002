#include "ui/display/Gestures.h"

#include <gtest/gtest.h>

using namespace belvor;

using Kind = ViewGesture::Kind;

constexpr PixelSize client{608, 456};

TEST(Gestures, ADragIsOneGestureOnceItMovesFartherThanAClick)
{
    Gestures gestures({4, 4});
    EXPECT_FALSE(gestures.move({10, 10}, client)) << "nothing is pressed";
    gestures.press(Kind::turn, {100, 100});
    EXPECT_FALSE(gestures.move({104, 96}, client)) << "a right click alone";
    const auto first = gestures.move({105, 100}, client);
    ASSERT_TRUE(first);
    EXPECT_EQ(first->kind, Kind::turn);
    EXPECT_DOUBLE_EQ(first->across, 5 * 180.0 / 456) << "all of the way, that within the tolerance too";
    const auto second = gestures.move({105, 90}, client);
    ASSERT_TRUE(second);
    EXPECT_DOUBLE_EQ(second->down, -10 * 180.0 / 456);
    EXPECT_EQ(second->number, first->number);
    gestures.end();
    EXPECT_FALSE(gestures.move({200, 200}, client));

    gestures.press(Kind::pan, {50, 50});
    const auto pan = gestures.move({43, 60}, client);
    ASSERT_TRUE(pan);
    EXPECT_EQ(std::tuple(pan->kind, pan->across, pan->down), std::tuple(Kind::pan, -7.0, 10.0));
    EXPECT_NE(pan->number, first->number);
}

TEST(Gestures, AHeldKeyIsOneGesture)
{
    Gestures gestures({4, 4});
    const std::uint32_t first = gestures.key(Kind::turn, 1, 0).number;
    EXPECT_EQ(gestures.key(Kind::turn, 1, 0).number, first);
    gestures.releaseKey();
    const std::uint32_t second = gestures.key(Kind::turn, 1, 0).number;
    EXPECT_NE(second, first);
    const std::uint32_t wheel = gestures.wheel(120, false, false, false, 1).number;
    EXPECT_NE(gestures.key(Kind::turn, 1, 0).number, second) << "the wheel came between";
    EXPECT_NE(gestures.wheel(120, false, false, false, 2).number, wheel) << "the key came between";
}

TEST(Gestures, AWheelTurnedWithoutAPauseIsOneGesture)
{
    Gestures gestures({4, 4});
    const auto zoom = [&](std::uint32_t time) {
        return gestures.wheel(120, false, false, false, time).number;
    };
    const std::uint32_t first = zoom(0xFFFFFF00u);
    EXPECT_EQ(zoom(0x10), first) << "the clock runs over";
    EXPECT_EQ(zoom(0x10 + Gestures::pause), first);
    EXPECT_NE(zoom(0x11 + 2 * Gestures::pause), first) << "a pause";
    Gestures slide({4, 4});
    EXPECT_NE(slide.slideWheel(120, false, 5001).number,
              gestures.wheel(120, false, false, false, 5002).number)
        << "another panel";
    EXPECT_EQ(slide.slideWheel(-240, false, 5002).down, -2.0);

    // Columns: delta, horizontal, shift, fine, kind, across, down.
    const std::tuple<int, bool, bool, bool, Kind, double, double> cases[] = {
        {120, false, false, false, Kind::zoom, 0, 1}, {-240, false, false, true, Kind::zoom, 0, -0.25},
        {120, true, false, false, Kind::turn, -5, 0}, {-120, false, true, false, Kind::turn, -5, 0},
        {120, true, true, false, Kind::turn, -5, 0},  {960, true, false, true, Kind::turn, -5, 0},
    };
    for (const auto& [delta, horizontal, shift, fine, kind, across, down] : cases) {
        const ViewGesture step = gestures.wheel(delta, horizontal, shift, fine, 9000);
        EXPECT_EQ(std::tie(step.kind, step.across, step.down), std::tie(kind, across, down)) << delta;
    }
}
