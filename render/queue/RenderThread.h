#pragma once

#include "render/queue/RenderHost.h"
#include "render/queue/RenderQueue.h"

namespace belvor {

/// Starts the thread that runs the requests of `queue` one at a time and reports to `host`.
/// It lives until an ExitRequest has run; RenderHost::threadEnded() is the last it does. A
/// request that fails is shown to the user, and the thread goes on. Throws Win32Error.
void startRenderThread(Handle<RenderQueue> queue, Handle<RenderHost> host);

}   // namespace belvor
