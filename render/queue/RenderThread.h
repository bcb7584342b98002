#pragma once

#include "render/queue/RenderHost.h"
#include "render/queue/RenderQueue.h"

namespace belvor {

/// Runs `request`, which was taken from `queue` with that kind, on this thread. A failure is shown to the
/// user. True when the thread is to end.
bool runRequest(RenderQueue& queue, RenderHost& host, RequestKind kind, Handle<Request> request);

/// Starts the thread that runs the requests of `queue` one at a time and reports to `host`.
/// It lives until an ExitRequest has run; RenderHost::threadEnded() is the last it does. A
/// request that fails is shown to the user, and the thread goes on. Throws Win32Error.
void startRenderThread(Handle<RenderQueue> queue, Handle<RenderHost> host);

}   // namespace belvor
