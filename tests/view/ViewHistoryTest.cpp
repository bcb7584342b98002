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
        EXPECT_EQ(history.current().zoom, zoom);
        EXPECT_EQ(history.current().imageSaved, zoom == 0.1);
    }
}

TEST(ViewHistory, KeepsThePreviousViewWhenNothingChanges)
{
    ViewHistory history;
    history.show(zoomed(0.1));
    history.show(zoomed(0.2));
    ViewParameters saved = zoomed(0.2);
    saved.imageSaved = true;
    EXPECT_FALSE(history.show(saved)) << "saved or not, it is the same view";
    EXPECT_FALSE(history.show(zoomed(std::numeric_limits<double>::quiet_NaN())));
    EXPECT_FALSE(history.show(zoomed(std::numeric_limits<double>::infinity())));
    EXPECT_EQ(history.previous().zoom, 0.1);

    history.markSaved(history.current());
    const ViewParameters first = history.current();
    history.begin(first);
    EXPECT_FALSE(history.current().imageSaved) << "another model";
    EXPECT_FALSE(history.show(history.previous())) << "no view before the first";
}

TEST(ViewHistory, AGestureIsOneChange)
{
    ViewHistory history;
    const auto view = [](double zoom) {
        ViewParameters next = freshView();
        next.zoom = zoom;
        return next;
    };
    history.begin(view(1));
    EXPECT_TRUE(history.show(view(2), 7));
    EXPECT_TRUE(history.show(view(3), 7));
    EXPECT_EQ(history.previous().zoom, 1.0) << "before its first step";
    EXPECT_FALSE(history.show(view(3), 8)) << "a gesture that changes nothing";
    EXPECT_TRUE(history.show(view(4), 8));
    EXPECT_EQ(history.previous().zoom, 3.0) << "another gesture";
    EXPECT_TRUE(history.show(view(5)));
    EXPECT_TRUE(history.show(view(6), 8));
    EXPECT_EQ(history.previous().zoom, 5.0) << "the same gesture after another change";
}
