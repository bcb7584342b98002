#include "render/queue/RenderQueue.h"

#include <mutex>
#include <utility>

namespace belvor {

RenderQueue::RenderQueue() : event("RenderQueue") {}

void RenderQueue::post(RequestKind kind, Handle<Request> request)
{
    const std::lock_guard guard(lock);
    queue.push_back({kind, std::move(request)});
    event.set();
}

bool RenderQueue::take(RequestKind& kind, Handle<Request>& request)
{
    std::list<Entry> first;
    {
        const std::lock_guard guard(lock);
        if (queue.empty()) return false;
        first.splice(first.begin(), queue, queue.begin());
        currentKind = first.front().kind;
        cancelledEarly = false;
    }
    kind = first.front().kind;
    request = std::move(first.front().request);
    return true;
}

void RenderQueue::setCurrent(RequestKind kind, Handle<Progress> progress)
{
    const std::lock_guard guard(lock);
    currentKind = kind;
    std::swap(currentProgress, progress);
    if (std::exchange(cancelledEarly, false) && currentProgress) currentProgress->abandon();
}

void RenderQueue::cancel(RequestKind kind)
{
    if (kind == imageFile) return;
    std::list<Entry> cancelled;   // released outside the lock: a sink may have a file to close
    const std::lock_guard guard(lock);
    if (currentKind == kind) {
        if (currentProgress) currentProgress->abandon();
        else cancelledEarly = true;
    }
    for (auto entry = queue.begin(); entry != queue.end();) {
        const auto next = std::next(entry);
        if (entry->kind == kind) cancelled.splice(cancelled.end(), queue, entry);
        entry = next;
    }
}

}   // namespace belvor
