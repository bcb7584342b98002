#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <future>
#include <mutex>

namespace belvor::test {

/// Messages that one thread sends another, which handles them when it comes to it: like those of
/// a window.
class Mailbox {
public:
    /// Returns when the receiver has done `task`.
    void send(std::function<void()> task)
    {
        std::packaged_task<void()> sent(std::move(task));
        std::future<void> done = sent.get_future();
        {
            const std::lock_guard hold(lock);
            tasks.push_back(std::move(sent));
        }
        change.notify_all();
        done.wait();
    }
    /// Does what has been sent; waits for that for up to a millisecond.
    bool serve()
    {
        std::unique_lock hold(lock);
        if (!change.wait_for(hold, std::chrono::milliseconds(1), [&] { return !tasks.empty(); }))
            return false;
        auto task = std::move(tasks.front());
        tasks.pop_front();
        hold.unlock();
        task();
        return true;
    }

private:
    std::mutex lock;
    std::condition_variable change;
    std::deque<std::packaged_task<void()>> tasks;
};

}   // namespace belvor::test
