#include "view/ProgressText.h"

#include <gtest/gtest.h>

namespace belvor {

TEST(ProgressText, NamesTheStages)
{
    const struct {
        int stage;
        Text first;
        int count;
        const char* text;
    } cases[] = {
        {0, Text::preparingStage, 2, "Preparing scene"},
        {1, Text::preparingStage, 2, "Generating image"},
        {2, Text::preparingStage, 2, "Phase 3"},
        {41, Text::thingsStage, 0, "Object 42"},
    };
    for (const auto& c : cases) EXPECT_EQ(stageText(c.stage, c.first, c.count), c.text);
}

TEST(ProgressText, RoundsTheBarAndTruncatesItsMarker)
{
    const struct {
        int left, right;
        double fraction, highWater;
        int end, marker;
        bool marked;
    } cases[] = {
        {100, 300, 1.0 / 3, 1.0 / 3, 167, 166, false},
        {0, 201, 0.5, 0.5, 101, 100, false},
        {100, 303, 0.2, 0.6, 222, 140, true},
    };
    for (const auto& c : cases) {
        const ProgressBar bar = progressBar(c.left, c.right, c.fraction, c.highWater);
        EXPECT_EQ(bar.end, c.end) << c.highWater;
        EXPECT_EQ(bar.marker, c.marker) << c.fraction;
        EXPECT_EQ(bar.marked, c.marked);
    }
}

}   // namespace belvor
