#include "tests/render/queue/FakeHost.h"

#include <gtest/gtest.h>

namespace belvor {

TEST(Progress, TellsTheHostOnceAnUpdate)
{
    const auto host = makeHandle<FakeHost>();
    Progress progress(host, "job", 587, 2);
    for (int i = 0; i < 1000; ++i) progress.progress(2, 0, i * 0.001);
    EXPECT_EQ(host->events(), std::vector<std::string>{"progress job"}) << "the first update is still pending";
    progress.updateDone();
    progress.progress(2, 0, 1.0);
    progress.progress(2, 1, 0.0);
    EXPECT_EQ(host->events(), (std::vector<std::string>{"progress job", "progress job"}));
}

TEST(Progress, BarStaysWhenTheFractionFallsBackAndRestartsWithTheStage)
{
    const auto host = makeHandle<FakeHost>();
    Progress progress(host, "job", 587, 2);
    const struct { const char* why; int stage; double fraction, highWater; } reports[] = {
        {"first report", 0, 0.25, 0.25},
        {"forward", 0, 0.6, 0.6},
        {"back moves the marker only", 0, 0.2, 0.6},
        {"below the bar", 0, 0.5, 0.6},
        {"a new stage", 1, 0.1, 0.1},
        {"an earlier stage is a new one too", 0, 0.0, 0.0},
    };
    for (const auto& r : reports) {
        progress.progress(3, r.stage, r.fraction);
        EXPECT_EQ(progress.stageCount(), 3) << r.why;
        EXPECT_EQ(progress.stage(), r.stage) << r.why;
        EXPECT_EQ(progress.fraction(), r.fraction) << r.why;
        EXPECT_EQ(progress.highWater(), r.highWater) << r.why;
    }
}

TEST(Progress, StopsTheRunFromTheReportAfterItWasAbandoned)
{
    Progress progress(makeHandle<FakeHost>(), "job", 587, 2);
    EXPECT_FALSE(progress.progress(2, 0, 0.1));
    progress.abandon();
    EXPECT_TRUE(progress.progress(2, 0, 0.2));
    EXPECT_THROW(progress.check(2, 0, 0.3), Reporter::Abandoned);
}

TEST(Progress, ThatWasNeverShownNeedsNoClearing)
{
    const auto host = makeHandle<FakeHost>();
    Progress(host, "quick", 587, 2).finish();
    EXPECT_TRUE(host->events().empty());

    Progress slow(host, "slow", 587, 2);
    slow.progress(2, 0, 0.5);
    EXPECT_FALSE(slow.finished());
    slow.finish();
    EXPECT_TRUE(slow.finished());
    EXPECT_EQ(host->events().back(), "ended slow");
}

}   // namespace belvor
