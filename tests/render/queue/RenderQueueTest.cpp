#include "tests/render/queue/FakeHost.h"

#include <gtest/gtest.h>

using namespace belvor;

TEST(RenderQueue, CancelRemovesOneKindAndKeepsTheOrder)
{
    const std::tuple<const char*, RequestKind, const char*> cases[] = {
        {"every request of the kind", 7, "9b 0d 9e 5f "},
        {"a kind with none", 3, "7a 9b 7c 0d 9e 5f "},
        {"image files are never cancelled", imageFile, "7a 9b 7c 0d 9e 5f "},
    };
    for (const auto& [why, cancelled, wantedLeft] : cases) {
        RenderQueue queue;
        const RequestKind kinds[] = {7, 9, 7, 0, 9, 5};
        for (int i = 0; i < 6; ++i) queue.post(kinds[i], request(std::string(1, static_cast<char>('a' + i))));
        queue.cancel(cancelled);
        std::string left;
        RequestKind kind;
        for (Handle<Request> next; queue.take(kind, next);) left += std::to_string(kind) + next->name + " ";
        EXPECT_EQ(left, wantedLeft) << why;
    }
}

TEST(RenderQueue, CancelStopsTheRequestThatRunsOrIsNext)
{
    enum When { beforeTheRun, inTheRun, afterTheRun };
    // Columns: why, running, cancelled, when, stopped.
    const std::tuple<const char*, RequestKind, RequestKind, When, bool> cases[] = {
        {"its own kind", 7, 7, inTheRun, true},
        {"another kind", 7, 8, inTheRun, false},
        {"an image file", imageFile, imageFile, inTheRun, false},
        {"between take and run", 7, 7, beforeTheRun, true},
        {"another kind before it; the cancel above is not kept", 7, 8, beforeTheRun, false},
        {"an image file before it", imageFile, imageFile, beforeTheRun, false},
        {"the run is over", 7, 7, afterTheRun, false},
    };
    const auto host = makeHandle<FakeHost>();
    RenderQueue queue;   // one for all: what a cancel leaves behind would show in the next case
    for (const auto& [why, running, cancelled, when, stopped] : cases) {
        const auto progress = makeHandle<Progress>(host, "job", Text::preparingStage, 2);
        RequestKind kind;
        Handle<Request> taken;
        queue.post(running, request("job"));
        ASSERT_TRUE(queue.take(kind, taken)) << why;
        for (const When moment : {beforeTheRun, inTheRun, afterTheRun}) {
            if (moment == inTheRun) queue.setCurrent(kind, progress);
            if (moment == afterTheRun) queue.setCurrent(0, {});
            if (moment == when) queue.cancel(cancelled);
        }
        EXPECT_EQ(progress->abandoned(), stopped) << why;
    }
}

TEST(Progress, RequestsOneUpdateAtATimeAndNeverShortensTheBarWithinAStage)
{
    const auto host = makeHandle<FakeHost>();
    Progress progress(host, "job", Text::preparingStage, 2);
    // Columns: why, stage, fraction, highWater.
    const std::tuple<const char*, int, double, double> reports[] = {
        {"first report", 0, 0.6, 0.6},
        {"back moves the marker only", 0, 0.2, 0.6},
        {"a new stage", 1, 0.1, 0.1},
    };
    for (const auto& [why, stage, fraction, highWater] : reports) {
        EXPECT_FALSE(progress.progress(3, stage, fraction)) << why;
        EXPECT_EQ(std::tuple(progress.stage(), progress.fraction(), progress.highWater()),
                  std::tuple(stage, fraction, highWater))
            << why;
    }
    EXPECT_EQ(host->events(), std::vector<std::string>{"progress job"})
        << "the first update is still pending";
    progress.updateDone();
    progress.progress(3, 1, 0.5);
    EXPECT_EQ(host->events().size(), 2u);

    progress.abandon();
    EXPECT_THROW(progress.check(3, 1, 0.6), Reporter::Abandoned);
    progress.finish();
    EXPECT_TRUE(progress.finished());
    Progress(host, "quick", Text::preparingStage, 2).finish();
    EXPECT_EQ(host->events().back(), "abandoned job") << "what was never shown needs no clearing";
}
