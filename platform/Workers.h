#pragma once

#include "platform/Thread.h"

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace belvor {

/// Threads that share the work of a thread that asks. The asking thread works too; its call
/// returns when no other thread works for it any more. Threads are started when a call wants
/// more than there are, and kept; where the system refuses one, fewer do the work. Any number
/// of threads may ask at the same time, and a piece of work may ask in turn.
class Workers {
public:
    static constexpr unsigned maxThreads = 256;

    /// What a piece of work is told about where it runs.
    class Turn {
    public:
        Turn(unsigned threadIndex, const std::atomic<bool>& stopFlag) noexcept
            : thread(threadIndex),
              stopped(stopFlag)
        {}
        /// Less than the number of threads of the call, 0 for the one that asked; no two pieces
        /// that run at the same time have the same.
        const unsigned thread;
        /// True once the call is to end early. A long piece asks now and then, and may return
        /// at once: its result is not used.
        bool stopping() const noexcept { return stopped.load(std::memory_order_relaxed); }
        /// Has the asking thread call `whileWaiting` soon, if it waits for others; see inOrder().
        void nudge() const noexcept
        {
            if (nudged) (*nudged)();
        }

    private:
        friend class Workers;
        const std::atomic<bool>& stopped;
        const std::function<void()>* nudged = nullptr;
    };

    /// Works on the indices `first` to `end` − 1.
    using Piece = std::function<void(std::size_t first, std::size_t end, const Turn& turn)>;
    using Make = std::function<void(std::size_t index, std::size_t slot, const Turn& turn)>;
    using Take = std::function<void(std::size_t index, std::size_t slot)>;

    /// The workers of the process, made when first asked for.
    static Workers& ofProcess();
    /// usableProcessors(), asked once, and at most maxThreads.
    static unsigned usualThreads() noexcept;

    Workers() = default;
    Workers(const Workers&) = delete;
    Workers& operator=(const Workers&) = delete;
    /// Waits for the threads; no call may be running.
    ~Workers();

    /// Calls `work` for the indices 0 to `count` − 1, in pieces of `pieceSize` (at least 1; the
    /// last may be shorter), on up to `threadCount` threads: each piece once, begun in rising
    /// order. An exception out of `work` stops all: no further piece begins, and the first
    /// exception is thrown here once the running pieces have returned.
    void forPieces(unsigned threadCount, std::size_t count, std::size_t pieceSize, const Piece& work);

    /// Calls `make` for the indices 0 to `count` − 1 on up to `threadCount` threads, and `take`
    /// for each on the asking thread, in rising order, after its `make`. At most `slots` (at
    /// least 1) indices are begun and not yet taken; each has a slot of its own, below `slots`,
    /// until it is taken. `whileWaiting` is called on the asking thread when it waits and another one
    /// nudges. Exceptions as for forPieces().
    void inOrder(unsigned threadCount, std::size_t count, std::size_t slots, const Make& make,
                 const Take& take, const std::function<void()>& whileWaiting = {});

    /// How long asking threads have been in calls altogether, those out of a piece of work left out.
    std::chrono::nanoseconds timeInCalls() const noexcept { return std::chrono::nanoseconds(callTime); }

private:
    class CallTimer;
    class Job;   // one call
    class Pieces;
    class Ordered;

    void run(Job& job, unsigned threadCount);
    void enlist(Job& job, unsigned threadCount);
    void serve() noexcept;

    std::atomic<std::int64_t> callTime{0};   // nanoseconds
    Lock lock;                               // guards what follows
    Condition jobsChanged;
    std::vector<Job*> openJobs;   // those that want more threads
    bool ending = false;
    std::vector<std::unique_ptr<JoinedThread>> threads;
};

}   // namespace belvor
