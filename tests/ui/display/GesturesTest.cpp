#include "ui/display/Gestures.h"

#include <gtest/gtest.h>

using namespace belvor;

using Kind = ViewGesture::Kind;

constexpr PixelSize client{608, 456};

TEST(Gestures, ADragIsOneGestureOnceItMovesFartherThanAClick)
{
    Gestures gestures({4, 4});
    std::uint32_t numbers[2]{};
    for (const Kind kind : {Kind::turn, Kind::pan}) {
        const double unit = kind == Kind::turn ? 180.0 / 456 : 1.0;   // degrees, or pixels
        EXPECT_FALSE(gestures.move({10, 10}, client)) << "nothing is pressed";
        gestures.press(kind, {100, 100});
        EXPECT_FALSE(gestures.move({104, 96}, client)) << "a click alone";
        const auto first = gestures.move({105, 100}, client), second = gestures.move({105, 90}, client);
        ASSERT_TRUE(first && second);
        EXPECT_TRUE(first->kind == kind && second->kind == kind && second->number == first->number);
        EXPECT_DOUBLE_EQ(first->across, 5 * unit) << "all of the way, that within the tolerance too";
        EXPECT_DOUBLE_EQ(second->down, -10 * unit);
        numbers[kind == Kind::pan] = first->number;
        gestures.end();
    }
    EXPECT_NE(numbers[0], numbers[1]);
}

TEST(Gestures, AHeldKeyIsOneGestureAndAWheelTurnedWithoutAPause)
{
    Gestures gestures({4, 4}), slide({4, 4});
    const auto key = [&] { return gestures.key(Kind::turn, 1, 0).number; };
    const auto zoom = [&](std::uint32_t time) {
        return gestures.wheel(120, false, false, false, time).number;
    };
    const std::uint32_t held = key();
    EXPECT_EQ(key(), held);
    gestures.releaseKey();
    const std::uint32_t again = key(), first = zoom(0xFFFFFF00u);
    EXPECT_NE(again, held);
    EXPECT_EQ(zoom(0x10), first) << "the clock runs over";
    EXPECT_EQ(zoom(0x10 + Gestures::pause), first);
    const std::uint32_t next = zoom(0x11 + 2 * Gestures::pause);
    EXPECT_NE(next, first) << "a pause";
    EXPECT_NE(key(), again) << "the wheel came between";
    EXPECT_NE(zoom(0x12 + 2 * Gestures::pause), next) << "the key came between";
    EXPECT_NE(slide.slideWheel(120, false, 5001).number, zoom(5002)) << "another panel";
    EXPECT_EQ(slide.slideWheel(-240, false, 5002).down, -2.0);
}

TEST(Gestures, TheWheelZoomsTurnsAndAdvances)
{
    using Row = std::tuple<int, bool, bool, bool, Kind, double, double>;
    for (const auto& [delta, horizontal, shift, fine, kind, across, down] :
         {Row{120, false, false, false, Kind::zoom, 0, 1},
          Row{-240, false, false, true, Kind::zoom, 0, -0.25},
          Row{120, true, false, false, Kind::turn, -5, 0}, Row{-120, false, true, false, Kind::turn, -5, 0},
          Row{120, true, true, false, Kind::turn, -5, 0}, Row{960, true, false, true, Kind::turn, -5, 0}}) {
        const ViewGesture step = Gestures({4, 4}).wheel(delta, horizontal, shift, fine, 9000);
        EXPECT_EQ(std::tie(step.kind, step.across, step.down), std::tie(kind, across, down)) << delta;
    }
}
