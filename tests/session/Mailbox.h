#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>

namespace belvor::test {

/// Messages that one thread sends another, which handles them when it comes to it: like those of
/// a window.
class Mailbox {
public:
    /// Returns when the receiver has done `task`.
    void send(std::function<void()> task)
    {
        std::unique_lock hold(lock);
        bool done = false;
        tasks.push_back([&] {
            task();
            const std::lock_guard ended(lock);
            done = true;
            change.notify_all();
        });
        change.notify_all();
        change.wait(hold, [&] { return done; });
    }
    /// Does what has been sent; waits for that for up to a millisecond.
    bool serve()
    {
        std::unique_lock hold(lock);
        change.wait_for(hold, std::chrono::milliseconds(1), [&] { return !tasks.empty(); });
        if (tasks.empty()) return false;
        const auto task = std::move(tasks.front());
        tasks.pop_front();
        hold.unlock();
        task();
        return true;
    }

private:
    std::mutex lock;
    std::condition_variable change;
    std::deque<std::function<void()>> tasks;
};

}   // namespace belvor::test
