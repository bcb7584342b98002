#pragma once

#include "platform/Handle.h"
#include "platform/Thread.h"
#include "render/queue/Progress.h"
#include "render/queue/Request.h"

#include <cstdint>
#include <list>

namespace belvor {

/// Whom a request's result is for: the window, as a number, or imageFile.
using RequestKind = std::uint32_t;
/// Renders to an image file, which are never cancelled. A null window maps to it too.
constexpr RequestKind imageFile = 0;

/// The requests that wait for the render thread, in arrival order, and the one it runs. Any
/// thread may call any operation; none of them waits for a request that runs.
class RenderQueue : public TSHandlable {
public:
    /// Throws Win32Error.
    RenderQueue();

    /// Appends `request` and wakes the render thread. Throws Win32Error.
    void post(RequestKind kind, Handle<Request> request);
    /// Removes the first request; false when there is none. Until setCurrent() a cancel()
    /// of its kind is kept for it.
    bool take(RequestKind& kind, Handle<Request>& request);
    /// Before a run, with its progress; and with none after it.
    void setCurrent(RequestKind kind, Handle<Progress> progress);
    /// Asks the running request of `kind` to stop and removes the waiting ones; of
    /// imageFile, none. A new request for a window is posted after a cancel, so that it
    /// takes the place of the older ones.
    void cancel(RequestKind kind);
    /// Returns once something may have been posted. Throws Win32Error.
    void waitForRequest() { event.wait(); }

private:
    struct Entry {
        RequestKind kind;
        Handle<Request> request;
    };

    Event event;
    Lock lock;
    std::list<Entry> queue;
    RequestKind currentKind = 0;
    Handle<Progress> currentProgress;
    bool cancelledEarly = false;   // cancelled between take() and setCurrent()
};

}   // namespace belvor
