#include "tests/render/queue/FakeHost.h"
#include "render/queue/RenderThread.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

namespace belvor {
namespace {

using Events = std::vector<std::string>;

/// Posts the requests and the exit request, and returns what the host heard until the end.
Events eventsOf(const Handle<FakeHost>& host, const std::vector<Handle<Request>>& requests)
{
    const auto queue = makeHandle<RenderQueue>();
    for (const auto& r : requests) queue->post(7, r);
    queue->post(7, makeHandle<ExitRequest>());
    startRenderThread(queue, host);
    host->waitForEnd();
    return host->events();
}

}   // namespace

TEST(RenderThread, ShowsWhatFailedAndLivesOn)
{
    const struct { const char* why; std::function<void(Reporter&)> work; std::string shown; } cases[] = {
        {"file fault", [](Reporter&) { throw BadFile(BadFile::duplicateBlock, "WALL", "a.dxf", 12); },
         "bad file Duplicate BLOCK name WALL\nat line 12 in a.dxf"},
        {"no memory", [](Reporter&) { throw std::bad_alloc(); }, "warning Out of memory"},
        {"system call", [](Reporter&) { throw std::runtime_error("CreateFile: denied"); }, "warning CreateFile: denied"},
    };
    for (const auto& c : cases) {
        const auto host = makeHandle<FakeHost>();
        EXPECT_EQ(eventsOf(host, {request("a", c.work), request("b", [&](Reporter&) { host->add("b ran"); })}),
                  (Events{c.shown, "b ran", "thread ended"}))
            << c.why;
    }
}

TEST(RenderThread, SaysNothingOfAnAbandonedRun)
{
    const auto host = makeHandle<FakeHost>();
    EXPECT_EQ(eventsOf(host, {request("a", [](Reporter&) { throw Reporter::Abandoned(); })}), Events{"thread ended"});
}

TEST(RenderThread, ClearsTheRunBeforeItReportsAFailure)
{
    // A box may stay open for long: by then the file must be closed, the status line free,
    // and a cancel must not reach the run that is over.
    const auto host = makeHandle<FakeHost>();
    const auto queue = makeHandle<RenderQueue>();
    struct Sink : TSHandlable {
        explicit Sink(Handle<FakeHost> h) : told(std::move(h)) {}
        ~Sink() override { told->add("sink closed"); }
        Handle<FakeHost> told;
    };
    Progress* failing = nullptr;
    host->whenReporting = [&] { queue->cancel(7); };
    queue->post(7, request("a", [&failing, sink = makeHandle<Sink>(host)](Reporter& progress) {
                    failing = &static_cast<Progress&>(progress);
                    failing->addReference();   // to be looked at after the run
                    progress.progress(2, 0, 0.5);
                    throw std::runtime_error("disk full");
                }));
    queue->post(9, makeHandle<ExitRequest>());
    startRenderThread(queue, host);
    host->waitForEnd();
    EXPECT_EQ(host->events(), (Events{"progress a", "ended a", "sink closed", "warning disk full", "thread ended"}));
    EXPECT_FALSE(failing->abandoned());
    failing->release();
}

TEST(RenderThread, RunsRequestsInArrivalOrderAndNoneAfterTheExit)
{
    const auto host = makeHandle<FakeHost>();
    const auto queue = makeHandle<RenderQueue>();
    const auto note = [&](const char* name) { return request(name, [&, name](Reporter&) { host->add(name); }); };
    queue->post(7, request("a", [&](Reporter&) {
                    host->add("a");
                    queue->post(7, note("posted by a"));
                    queue->post(7, makeHandle<ExitRequest>());
                    queue->post(7, note("too late"));
                }));
    queue->post(8, note("b"));
    startRenderThread(queue, host);
    host->waitForEnd();
    EXPECT_EQ(host->events(), (Events{"a", "b", "posted by a", "thread ended"}));
}

TEST(RenderThread, HasLetGoOfTheQueueWhenItTellsItsEnd)
{
    struct Watched : RenderQueue {
        explicit Watched(Handle<FakeHost> h) : host(std::move(h)) {}
        ~Watched() override { host->add("queue gone"); }
        Handle<FakeHost> host;
    };
    const auto host = makeHandle<FakeHost>();
    {
        Handle<RenderQueue> queue = makeHandle<Watched>(host);
        queue->post(7, makeHandle<ExitRequest>());
        startRenderThread(std::move(queue), host);   // the thread's handle is the only one
    }
    host->waitForEnd();
    const Events events = host->events();
    EXPECT_EQ(events.back(), "thread ended");
    EXPECT_EQ(events.size(), 2u);
}

TEST(RenderThread, TellsWhenItCannotTellItsEnd)
{
    const auto host = makeHandle<FakeHost>();
    Event warned("test");
    host->failToEnd = true;
    host->whenReporting = [&] { warned.set(); };
    const auto queue = makeHandle<RenderQueue>();
    queue->post(7, makeHandle<ExitRequest>());
    startRenderThread(queue, host);
    warned.wait();
}

}   // namespace belvor
