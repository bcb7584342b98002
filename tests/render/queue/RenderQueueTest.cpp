#include "tests/render/queue/FakeHost.h"

#include <gtest/gtest.h>

namespace belvor {
namespace {

/// The names of all waiting requests, taken out.
std::string drained(RenderQueue& queue)
{
    std::string names;
    RequestKind kind;
    for (Handle<Request> next; queue.take(kind, next);) names += std::to_string(kind) + next->name + " ";
    return names;
}

}   // namespace

TEST(RenderQueue, CancelRemovesOneKindAndKeepsTheOrder)
{
    const struct { const char* why; RequestKind cancelled; const char* left; } cases[] = {
        {"every request of the kind", 7, "9b 0d 9e 5f "},
        {"a kind with one", 5, "7a 9b 7c 0d 9e "},
        {"a kind with none", 3, "7a 9b 7c 0d 9e 5f "},
        {"image files are never cancelled", imageFile, "7a 9b 7c 0d 9e 5f "},
    };
    for (const auto& c : cases) {
        RenderQueue queue;
        const RequestKind kinds[] = {7, 9, 7, 0, 9, 5};
        for (int i = 0; i < 6; ++i) queue.post(kinds[i], request(std::string(1, static_cast<char>('a' + i))));
        queue.cancel(c.cancelled);
        EXPECT_EQ(drained(queue), c.left) << c.why;
    }
}

TEST(RenderQueue, CancelReachesTheRunningRequestOfItsKindOnly)
{
    const auto host = makeHandle<FakeHost>();
    const struct { const char* why; RequestKind running, cancelled; bool stopped; } cases[] = {
        {"its own kind", 7, 7, true},
        {"another kind", 7, 8, false},
        {"an image file", imageFile, imageFile, false},
        {"nothing runs", 0, 7, false},
    };
    for (const auto& c : cases) {
        RenderQueue queue;
        const auto progress = makeHandle<Progress>(host, "job", 587, 2);
        queue.setCurrent(c.running, progress);
        queue.cancel(c.cancelled);
        EXPECT_EQ(progress->abandoned(), c.stopped) << c.why;
    }
}

TEST(RenderQueue, CancelBetweenTakeAndTheRunIsNotLost)
{
    const auto host = makeHandle<FakeHost>();
    RenderQueue queue;
    RequestKind kind;
    Handle<Request> taken;
    const auto startAfter = [&](RequestKind posted, RequestKind cancelled) {
        queue.post(posted, request("job"));
        EXPECT_TRUE(queue.take(kind, taken));
        queue.cancel(cancelled);
        const auto progress = makeHandle<Progress>(host, "job", 587, 2);
        queue.setCurrent(kind, progress);
        const bool stopped = progress->abandoned();
        queue.setCurrent(0, {});
        return stopped;
    };
    EXPECT_TRUE(startAfter(7, 7));
    EXPECT_FALSE(startAfter(7, 8)) << "the cancel before must not be kept for the next run";
    EXPECT_FALSE(startAfter(imageFile, imageFile));
}

TEST(RenderQueue, CancelAfterTheRunTouchesNothing)
{
    const auto host = makeHandle<FakeHost>();
    RenderQueue queue;
    const auto progress = makeHandle<Progress>(host, "job", 587, 2);
    queue.setCurrent(7, progress);
    queue.setCurrent(0, {});
    queue.cancel(7);
    EXPECT_FALSE(progress->abandoned());
}

TEST(RenderQueue, ReleasesWhatNeverRan)
{
    bool released = false;
    struct Flag : TSHandlable {
        explicit Flag(bool& f) : flag(f) {}
        ~Flag() override { flag = true; }
        bool& flag;
    };
    {
        RenderQueue queue;
        queue.post(7, request("job", [flag = makeHandle<Flag>(released)](Reporter&) {}));
        EXPECT_FALSE(released);
    }
    EXPECT_TRUE(released);
}

}   // namespace belvor
