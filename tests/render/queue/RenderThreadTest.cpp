#include "render/queue/RenderThread.h"
#include "tests/render/queue/FakeHost.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

using namespace belvor;

namespace {

using Events = std::vector<std::string>;

/// A sink or a queue that tells when it is gone.
struct Told : RenderQueue {
    Told(Handle<FakeHost> h, const char* t) : host(std::move(h)), text(t) {}
    ~Told() override { host->add(text); }
    Handle<FakeHost> host;
    const char* text;
};

/// Runs what was posted, up to the exit request, and returns what the host heard until the end.
Events eventsOf(const Handle<FakeHost>& host, const Handle<RenderQueue>& queue)
{
    startRenderThread(queue, host);
    host->waitForEnd();
    return host->events();
}

}   // namespace

TEST(RenderThread, ReportsAFailureAndContinuesWithTheNextRequest)
{
    const std::tuple<const char*, std::function<void(Reporter&)>, Events> cases[] = {
        {"file fault",
         [](Reporter&) { throw BadFile(BadFile::duplicateBlock, "WALL", "a.dxf", 12); },
         {"bad file Duplicate BLOCK name WALL\nat line 12 in a.dxf"}},
        {"no memory", [](Reporter&) { throw std::bad_alloc(); }, {"warning Out of memory"}},
        {"system call",
         [](Reporter&) { throw std::runtime_error("CreateFile: denied"); },
         {"warning CreateFile: denied"}},
        {"abandoned: nothing to say", [](Reporter&) { throw Reporter::Abandoned(); }, {}},
    };
    for (const auto& [why, work, shown] : cases) {
        const auto host = makeHandle<FakeHost>();
        const auto queue = makeHandle<RenderQueue>();
        queue->post(7, request("a", work));
        queue->post(7, request("b", [&](Reporter&) { host->add("b ran"); }));
        queue->post(7, makeHandle<ExitRequest>());
        Events expected = shown;
        expected.insert(expected.end(), {"b ran", "thread ended"});
        EXPECT_EQ(eventsOf(host, queue), expected) << why;
    }
}

TEST(RenderThread, EndsTheRunBeforeItReportsAFailure)
{
    // A box may stay open for long: by then the file must be closed, the status line free,
    // and a cancel must not reach the run that is over.
    const auto host = makeHandle<FakeHost>();
    const auto queue = makeHandle<RenderQueue>();
    Handle<Progress> failing;
    host->whenReporting = [&] { queue->cancel(7); };
    queue->post(7, request("a", [&failing, sink = makeHandle<Told>(host, "sink closed")](Reporter& progress) {
                    failing = Handle<Progress>(&static_cast<Progress&>(progress));
                    progress.progress(2, 0, 0.5);
                    throw std::runtime_error("disk full");
                }));
    queue->post(9, makeHandle<ExitRequest>());
    EXPECT_EQ(eventsOf(host, queue),
              (Events{"progress a", "ended a", "sink closed", "warning disk full", "thread ended"}));
    EXPECT_FALSE(failing->abandoned());
}

TEST(RenderThread, RunsRequestsInArrivalOrderAndNoneAfterTheExit)
{
    const auto host = makeHandle<FakeHost>();
    const auto queue = makeHandle<RenderQueue>();
    const auto note = [&](const char* name) {
        return request(name, [&, name](Reporter&) { host->add(name); });
    };
    queue->post(7, request("a", [&](Reporter&) {
                    host->add("a");
                    queue->post(7, note("posted by a"));
                    queue->post(7, makeHandle<ExitRequest>());
                    queue->post(7, note("too late"));
                }));
    queue->post(8, note("b"));
    EXPECT_EQ(eventsOf(host, queue), (Events{"a", "b", "posted by a", "thread ended"}));
}

TEST(RenderThread, ReleasesTheQueueBeforeItReportsItsEnd)
{
    const auto host = makeHandle<FakeHost>();
    Handle<RenderQueue> queue = makeHandle<Told>(host, "queue gone");
    queue->post(7, makeHandle<ExitRequest>());
    startRenderThread(std::move(queue), host);   // the thread's handle is the only one
    host->waitForEnd();
    EXPECT_EQ(host->events(), (Events{"queue gone", "thread ended"}));
}

TEST(RenderThread, WarnsWhenItCannotReportItsEnd)
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
