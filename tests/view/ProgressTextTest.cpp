#include "view/ProgressText.h"

#include <gtest/gtest.h>

using namespace belvor;

TEST(ProgressText, EveryStageHasAText)
{
    // Columns: stage, first, count, text.
    const std::tuple<int, Text, int, const char*> cases[] = {
        {0, Text::preparingStage, 2, "Preparing scene"},
        {1, Text::preparingStage, 2, "Generating image"},
        {2, Text::preparingStage, 2, "Phase 3"},
        {41, Text::thingsStage, 0, "Object 42"},
    };
    for (const auto& [stage, first, count, text] : cases) EXPECT_EQ(stageText(stage, first, count), text);
}

TEST(ProgressText, TheBarIsRoundedAndItsMarkerTruncated)
{
    // Columns: left, right, fraction, highWater, end, marker, marked.
    const std::tuple<int, int, double, double, int, int, bool> cases[] = {
        {100, 300, 1.0 / 3, 1.0 / 3, 167, 166, false},
        {0, 201, 0.5, 0.5, 101, 100, false},
        {100, 303, 0.2, 0.6, 222, 140, true},
    };
    for (const auto& [left, right, fraction, highWater, end, marker, marked] : cases) {
        const ProgressBar bar = progressBar(left, right, fraction, highWater);
        EXPECT_EQ(std::tie(bar.end, bar.marker, bar.marked), std::tie(end, marker, marked)) << highWater;
    }
}
