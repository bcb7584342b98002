#include "view/ProgressText.h"

#include <gtest/gtest.h>

using namespace belvor;

TEST(ProgressText, AStageWithoutATextIsNumbered)
{
    EXPECT_EQ(stageText(1, Text::preparingStage, 2), "Generating image");
    EXPECT_EQ(stageText(2, Text::preparingStage, 2), "Phase 3");
    EXPECT_EQ(stageText(41, Text::thingsStage, 0), "Object 42");
}

TEST(ProgressText, TheBarIsRoundedAndItsMarkerTruncated)
{
    using Row = std::tuple<int, int, double, double, int, int, bool>;
    for (const auto& [left, right, fraction, highWater, end, marker, marked] :
         {Row{100, 300, 1.0 / 3, 1.0 / 3, 167, 166, false}, Row{0, 201, 0.5, 0.5, 101, 100, false},
          Row{100, 303, 0.2, 0.6, 222, 140, true}}) {
        const ProgressBar bar = progressBar(left, right, fraction, highWater);
        EXPECT_EQ(std::tie(bar.end, bar.marker, bar.marked), std::tie(end, marker, marked)) << highWater;
    }
}
