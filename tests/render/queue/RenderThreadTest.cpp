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

class RenderThreads : public testing::Test {
protected:
    /// Runs what was posted and an exit request; what the host has heard until the end.
    Events eventsUntilTheEnd()
    {
        queue->post(9, makeHandle<ExitRequest>());
        startRenderThread(queue, host);
        host->waitForEnd();
        return host->events();
    }
    Handle<Request> note(const char* name)
    {
        return request(name, [this, name](Reporter&) { host->add(name); });
    }
    const Handle<FakeHost> host = makeHandle<FakeHost>();
    const Handle<RenderQueue> queue = makeHandle<RenderQueue>();
};

}   // namespace

TEST_F(RenderThreads, ReportAFailureAndContinueWithTheNextRequest)
{
    queue->post(7,
                request("a", [](Reporter&) { throw BadFile(BadFile::duplicateBlock, "WALL", "a.dxf", 12); }));
    queue->post(7, request("b", [](Reporter&) { throw std::bad_alloc(); }));
    queue->post(7, request("c", [](Reporter&) { throw std::runtime_error("CreateFile: denied"); }));
    queue->post(7, request("d", [](Reporter&) { throw Reporter::Abandoned(); }));   // nothing to say
    queue->post(7, note("e ran"));
    EXPECT_EQ(eventsUntilTheEnd(),
              (Events{"bad file Duplicate BLOCK name WALL\nat line 12 in a.dxf", "warning Out of memory",
                      "warning CreateFile: denied", "e ran", "thread ended"}));
}

TEST_F(RenderThreads, EndTheRunBeforeTheyReportAFailure)
{
    // A box may stay open for long: by then the file must be closed, the status line free,
    // and a cancel must not reach the run that is over.
    Handle<Progress> failing;
    host->whenReporting = [&] { queue->cancel(7); };
    queue->post(7, request("a", [&failing, sink = makeHandle<Told>(host, "sink closed")](Reporter& progress) {
                    failing = Handle<Progress>(&static_cast<Progress&>(progress));
                    progress.progress(2, 0, 0.5);
                    throw std::runtime_error("disk full");
                }));
    EXPECT_EQ(eventsUntilTheEnd(),
              (Events{"progress a", "ended a", "sink closed", "warning disk full", "thread ended"}));
    EXPECT_FALSE(failing->abandoned());
}

TEST_F(RenderThreads, RunRequestsInArrivalOrderAndNoneAfterTheExit)
{
    queue->post(7, request("a", [&](Reporter&) {
                    queue->post(7, note("posted by a"));
                    queue->post(7, makeHandle<ExitRequest>());
                    queue->post(7, note("too late"));
                }));
    queue->post(8, note("b"));
    startRenderThread(queue, host);
    host->waitForEnd();
    EXPECT_EQ(host->events(), (Events{"b", "posted by a", "thread ended"}));
}

TEST_F(RenderThreads, ReleaseTheQueueBeforeTheyReportTheirEndAndWarnWhenTheyCannot)
{
    Handle<RenderQueue> told = makeHandle<Told>(host, "queue gone");
    told->post(7, makeHandle<ExitRequest>());
    startRenderThread(std::move(told), host);   // the thread's handle is the only one
    host->waitForEnd();
    EXPECT_EQ(host->events(), (Events{"queue gone", "thread ended"}));
    Event warned("test");
    host->failToEnd = true;
    host->whenReporting = [&] { warned.set(); };
    eventsUntilTheEnd();
    warned.wait();
}
