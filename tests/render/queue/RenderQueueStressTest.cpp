#include "render/queue/RenderThread.h"
#include "tests/render/queue/FakeHost.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <memory>
#include <random>
#include <thread>

using namespace belvor;

namespace {

constexpr int operationCount = 300'000;

struct Counts {
    std::atomic<int> ran{0}, alive{0};
};

/// Reports some times, waits now and then, and fails now and then.
Handle<Request> randomRequest(unsigned number, Counts& counts)
{
    ++counts.alive;
    const std::shared_ptr<Counts> tally(&counts, [](Counts* all) { --all->alive; });
    return request("random", [number, tally](Reporter& progress) {
        ++tally->ran;
        for (unsigned i = 0; i < number % 8; ++i) {
            progress.check(2, static_cast<int>(i / 4), i / 8.0);
            if (number % 4096 == 5)
                std::this_thread::sleep_for(std::chrono::microseconds(number / 4096 % 300));
        }
        if (number % 64 == 9) throw BadFile(BadFile::badGroup, "a.dxf", 3);
    });
}

/// An update is done some time after it was asked for.
class SlowHost : public FakeHost {
public:
    void progressMade(Progress& progress) override
    {
        progress.updatePending();
        const std::lock_guard guard(lock);
        shown = Handle<Progress>(&progress);
    }
    void progressEnded(const Progress&) noexcept override
    {
        const std::lock_guard guard(lock);
        shown = {};
    }
    /// What a timer does on the interface thread.
    void update()
    {
        Handle<Progress> progress;
        {
            const std::lock_guard guard(lock);
            std::swap(progress, shown);
        }
        if (!progress) return;
        if (!progress->finished()) seen += progress->fraction() + progress->highWater() + progress->stage();
        progress->updateDone();
    }
    double seen = 0.0;

private:
    Lock lock;
    Handle<Progress> shown;
};

}   // namespace

TEST(RenderQueueStress, NoRequestLeaksWhileManyArePostedAndCancelled)
{
    Counts counts;
    int posted = 0;
    std::mt19937 random(20261121);
    for (int done = 0; done < operationCount;) {
        const auto host = makeHandle<SlowHost>();
        auto queue = makeHandle<RenderQueue>();
        startRenderThread(queue, host);
        const int end = std::min(operationCount, done + 1 + static_cast<int>(random() % 20'000));
        for (; done < end; ++done) {
            const auto number = static_cast<unsigned>(random());
            const RequestKind kind = number % 5;   // 0 is an image file
            switch (random() % 4) {
            case 0: queue->cancel(kind); break;
            case 1:   // a new view supersedes the old one
                queue->cancel(kind);
                [[fallthrough]];
            case 2:
                queue->post(kind, randomRequest(number, counts));
                ++posted;
                break;
            case 3: host->update(); break;
            }
            if (number % 1000 == 1)
                std::this_thread::sleep_for(std::chrono::microseconds(static_cast<int>(random() % 200)));
        }
        for (RequestKind kind = 0; kind < 5; ++kind) queue->cancel(kind);
        queue->post(1, makeHandle<ExitRequest>());
        queue->post(1, randomRequest(1u, counts));   // never runs, and does not leak
        ++posted;
        host->waitForEnd();
    }
    EXPECT_EQ(counts.alive.load(), 0);
    EXPECT_GT(counts.ran.load(), 0);
    EXPECT_LT(counts.ran.load(), posted) << "some requests were cancelled before they ran";
}
