#pragma once

#include "errors/BadFile.h"
#include "platform/Thread.h"
#include "platform/Win32Error.h"
#include "render/queue/Progress.h"
#include "render/queue/RenderHost.h"
#include "render/queue/RenderQueue.h"

#include <functional>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace belvor {

/// Keeps what the render thread tells it, in order.
class FakeHost : public RenderHost {
public:
    void progressMade(Progress& progress) override
    {
        progress.updatePending();
        add("progress " + progress.name);
    }
    void progressEnded(const Progress& progress) noexcept override
    {
        add((progress.abandoned() ? "abandoned " : "ended ") + progress.name);
    }
    void modelLoaded(std::uint32_t number, Model*) override { add("loaded " + std::to_string(number)); }
    void threadEnded() override
    {
        const bool fails = failToEnd;   // whoever waits for the end may change it
        if (!fails) add("thread ended");
        end.set();
        if (fails) throw Win32Error("PostMessage", 5);
    }
    void showBadFile(const BadFile& fault) override { report("bad file " + fault.boxText()); }
    void warning(const std::string& text) override { report("warning " + text); }

    void waitForEnd() { end.wait(); }
    std::vector<std::string> events()
    {
        const std::lock_guard guard(lock);
        return list;
    }
    void add(std::string event)
    {
        const std::lock_guard guard(lock);
        list.push_back(std::move(event));
    }

    bool failToEnd = false;
    std::function<void()> whenReporting;   ///< Called before a failure is noted, on the render thread.

private:
    void report(std::string event)
    {
        if (whenReporting) whenReporting();
        add(std::move(event));
    }
    Lock lock;
    Event end{"FakeHost"};
    std::vector<std::string> list;
};

/// A request that does what it is told.
class TestRequest : public Request {
public:
    TestRequest(std::string requestName, std::function<void(Reporter&)> task)
        : Request(std::move(requestName), Text::preparingStage, 2),
          work(std::move(task))
    {}
    void run(Reporter& progress) override { work(progress); }

private:
    std::function<void(Reporter&)> work;
};

inline Handle<Request> request(
    std::string name, std::function<void(Reporter&)> work = [](Reporter&) {})
{
    return makeHandle<TestRequest>(std::move(name), std::move(work));
}

}   // namespace belvor
