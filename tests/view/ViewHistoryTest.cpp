#include "view/ViewHistory.h"

#include <gtest/gtest.h>

#include <limits>

using namespace belvor;

namespace {

ViewParameters zoomed(double zoom)
{
    ViewParameters view;
    view.zoom = zoom;
    return view;
}

}   // namespace

TEST(ViewHistory, PreviousTogglesBetweenTwoViewsAndKeepsWhichIsSaved)
{
    ViewHistory history;
    EXPECT_TRUE(history.show(history.previous())) << "the default view has its first light off";
    EXPECT_EQ(history.current().lights[0].intensity, 0.0);
    history.show(zoomed(0.1));
    history.markSaved(history.current());
    history.show(zoomed(0.2));
    for (const double zoom : {0.1, 0.2, 0.1}) {
        EXPECT_TRUE(history.show(history.previous()));
        EXPECT_TRUE(history.current().zoom == zoom && history.current().imageSaved == (zoom == 0.1)) << zoom;
    }
    EXPECT_FALSE(history.show(zoomed(0.1))) << "whether it is saved makes no other view";
    history.begin(history.current());
    EXPECT_FALSE(history.current().imageSaved) << "another model";
    EXPECT_FALSE(history.show(history.previous())) << "no view before the first";
}

TEST(ViewHistory, AGestureIsOneChangeAndAHundredCanBeUndone)
{
    // Columns: why, zoom, gesture, changed, the zoom before.
    const std::tuple<const char*, double, std::uint32_t, bool, double> cases[] = {
        {"first step", 2, 7, true, 1},
        {"second step", 3, 7, true, 1},
        {"a gesture that changes nothing", 3, 8, false, 1},
        {"another gesture", 4, 8, true, 3},
        {"no gesture", 5, 0, true, 4},
        {"the same gesture after another change", 6, 8, true, 5},
        {"not a number", std::numeric_limits<double>::quiet_NaN(), 0, false, 5},
        {"infinite", std::numeric_limits<double>::infinity(), 0, false, 5},
    };
    ViewHistory history;
    history.begin(zoomed(1));
    for (const auto& [why, zoom, gesture, changed, before] : cases) {
        EXPECT_EQ(history.show(zoomed(zoom), gesture), changed) << why;
        EXPECT_EQ(history.previous().zoom, before) << why;
    }
    for (int k = 1; k <= 105; ++k) history.show(zoomed(100 + k));
    for (int k = 104; k >= 5; --k) {
        EXPECT_TRUE(history.undo());
        EXPECT_EQ(history.current().zoom, 100 + k);
    }
    EXPECT_FALSE(history.undo()) << "a hundred changes";
    while (history.redo()) {}
    EXPECT_EQ(history.current().zoom, 205);
}
