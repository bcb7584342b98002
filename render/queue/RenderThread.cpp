#include "render/queue/RenderThread.h"

#include "errors/BadFile.h"
#include "platform/Thread.h"
#include "resources/Texts.h"

#include <exception>
#include <new>
#include <utility>

namespace belvor {
namespace {

/// The time in which a request is the queue's current one. Its end, also by an exception,
/// clears everything that points to the run, before anybody is told why it failed.
class Run {
public:
    Run(RenderQueue& requests, RenderHost& host, RequestKind kind, Handle<Request> work)
        : queue(requests),
          request(std::move(work)),
          progress(makeHandle<Progress>(Handle<RenderHost>(&host), request->name, request->firstStageText,
                                        request->stageTexts))
    {
        queue.setCurrent(kind, progress);
    }
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;
    ~Run()
    {
        queue.setCurrent(0, {});
        progress->finish();
    }
    /// True when the thread is to end.
    bool operator()()
    {
        request->run(*progress);
        return request->endsThread();
    }

private:
    RenderQueue& queue;
    Handle<Request> request;
    Handle<Progress> progress;
};

}   // namespace

bool runRequest(RenderQueue& queue, RenderHost& host, RequestKind kind, Handle<Request> request)
try {
    return Run(queue, host, kind, std::move(request))();
} catch (const Reporter::Abandoned&) {
    return false;   // the user wanted something else: nothing to say
} catch (const BadFile& fault) {
    host.showBadFile(fault);
    return false;
} catch (const std::bad_alloc&) {
    host.warning(textOf(Text::outOfMemory));
    return false;
} catch (const std::exception& failure) {
    host.warning(failure.what());
    return false;
}

namespace {

void runRequests(RenderQueue& queue, RenderHost& host)
{
    for (;;) {
        RequestKind kind;
        for (Handle<Request> request; queue.take(kind, request);)
            if (runRequest(queue, host, kind, std::exchange(request, {}))) return;
        queue.waitForRequest();
    }
}

/// Runs `step`; tells the user of a failure as far as that is possible.
template <class Step>
void reportingFailure(RenderHost& host, Step step) noexcept
try {
    try {
        step();
    } catch (const std::exception& failure) {
        host.warning(failure.what());
    }
} catch (...) {}

void renderThread(Handle<RenderQueue> queue, Handle<RenderHost> host) noexcept
{
    reportingFailure(*host, [&] { runRequests(*queue, *host); });
    queue = {};   // the host may delete everything else when it is told of the end
    reportingFailure(*host, [&] { host->threadEnded(); });
}

}   // namespace

void startRenderThread(Handle<RenderQueue> queue, Handle<RenderHost> host)
{
    startThread([queue = std::move(queue), host = std::move(host)]() mutable {
        renderThread(std::move(queue), std::move(host));
    });
}

}   // namespace belvor
