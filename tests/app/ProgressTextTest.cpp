#include "app/state/ProgressText.h"

#include <gtest/gtest.h>

namespace belvor {

TEST(ProgressText, NamesTheStages)
{
    const struct { const char* why; int stage, first, count; const char* text; } cases[] = {
        {"a render prepares", 0, 587, 2, "Preparing scene"},
        {"and draws", 1, 587, 2, "Generating image"},
        {"a stage beyond the texts", 2, 587, 2, "Phase 3"},
        {"one stage", 0, 585, 1, "DXF file"},
        {"and one too many", 1, 585, 1, "Phase 2"},
        {"a pattern for all stages", 0, 584, 0, "Object 1"},
        {"any of them", 41, 584, 0, "Object 42"},
    };
    for (const auto& c : cases) EXPECT_EQ(stageText(c.stage, c.first, c.count), c.text) << c.why;
}

TEST(ProgressText, RoundsTheBarAndTruncatesItsMarker)
{
    const struct { int left, right; double fraction, highWater; int end, marker; bool marked; } cases[] = {
        {100, 300, 0.25, 0.25, 150, 150, false},
        {100, 300, 1.0 / 3, 1.0 / 3, 167, 166, false},
        {0, 201, 0.5, 0.5, 101, 100, false},
        {100, 303, 0.2, 0.6, 222, 140, true},
        {100, 300, 0.0, 0.0, 100, 100, false},
        {100, 300, 1.0, 1.0, 300, 300, false},
    };
    for (const auto& c : cases) {
        const ProgressBar bar = progressBar(c.left, c.right, c.fraction, c.highWater);
        EXPECT_EQ(bar.end, c.end) << c.highWater;
        EXPECT_EQ(bar.marker, c.marker) << c.fraction;
        EXPECT_EQ(bar.marked, c.marked);
    }
}

}   // namespace belvor
