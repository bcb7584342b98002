#include "platform/Workers.h"

#include "platform/Processors.h"

#include <algorithm>
#include <exception>
#include <mutex>
#include <utility>

namespace belvor {

/// One call: what its threads share. Lives on the stack of the asking thread.
class Workers::Job {
public:
    explicit Job(unsigned threadCount) : wanted(threadCount) {}
    virtual ~Job() = default;

    /// Works until nothing is left to begin.
    void workOn(unsigned thread) noexcept
    try {
        Turn turn(thread, stopped);
        turn.nudged = nudgesAsking();
        work(turn);
    } catch (...) {
        fail(std::current_exception());
    }

    void throwFailure() const
    {
        if (failure) std::rethrow_exception(failure);
    }

    const unsigned wanted;   // threads, the asking one included
    // Guarded by the lock of the workers.
    unsigned entered = 1, working = 0;   // working: besides the asking one
    Condition idle;

protected:
    virtual void work(const Turn& turn) = 0;
    /// What Turn::nudge() calls, on any thread; none when nobody would hear it.
    virtual const std::function<void()>* nudgesAsking() const noexcept { return nullptr; }

    /// Guards `failure`, and what the kinds of jobs say.
    Lock guard;
    Condition changed;
    std::atomic<bool> stopped{false};

private:
    void fail(std::exception_ptr thrown) noexcept
    {
        const std::lock_guard held(guard);
        if (!failure) failure = std::move(thrown);
        stopped = true;
        changed.notifyAll();
    }

    std::exception_ptr failure;
};

class Workers::Pieces : public Workers::Job {
public:
    Pieces(unsigned threadCount, std::size_t indexCount, std::size_t size, const Piece& call)
        : Job(threadCount),
          count(indexCount),
          pieceSize(size),
          pieceCount(indexCount / size + (indexCount % size != 0)),
          piece(call)
    {}

private:
    void work(const Turn& turn) override
    {
        while (!turn.stopping()) {
            const std::size_t number = next.fetch_add(1, std::memory_order_relaxed);
            if (number >= pieceCount) return;
            const std::size_t first = number * pieceSize;
            piece(first, std::min(count, first + pieceSize), turn);
        }
    }

    const std::size_t count, pieceSize, pieceCount;
    const Piece& piece;
    std::atomic<std::size_t> next{0};
};

class Workers::Ordered : public Workers::Job {
public:
    Ordered(unsigned threadCount, std::size_t indexCount, std::size_t slots, const Make& makeCall,
            const Take& takeCall, const std::function<void()>& waitingCall)
        : Job(threadCount),
          count(indexCount),
          made(slots, 0),
          make(makeCall),
          take(takeCall),
          whileWaiting(waitingCall),
          nudge([this] { setNudged(); })
    {}

private:
    void work(const Turn& turn) override
    {
        std::unique_lock held(guard);
        while (!stopped && taken < count) {
            if (turn.thread == 0 && made[taken % made.size()]) {
                takeNext(held);
            } else if (begun < count && begun - taken < made.size()) {
                makeNext(held, turn);
            } else if (turn.thread != 0 && begun == count) {
                return;
            } else {
                changed.wait(guard);
                if (turn.thread == 0 && std::exchange(nudged, false)) callWaiting(held);
            }
        }
    }
    const std::function<void()>* nudgesAsking() const noexcept override
    {
        return whileWaiting ? &nudge : nullptr;
    }

    void setNudged()
    {
        const std::lock_guard held(guard);
        nudged = true;
        changed.notifyAll();
    }

    void callWaiting(std::unique_lock<Lock>& held)
    {
        held.unlock();
        whileWaiting();
        held.lock();
    }

    void takeNext(std::unique_lock<Lock>& held)
    {
        held.unlock();
        take(taken, taken % made.size());   // only this thread changes `taken`
        held.lock();
        made[taken % made.size()] = 0;
        ++taken;
        changed.notifyAll();
    }

    void makeNext(std::unique_lock<Lock>& held, const Turn& turn)
    {
        const std::size_t index = begun++;
        held.unlock();
        make(index, index % made.size(), turn);
        held.lock();
        made[index % made.size()] = 1;
        if (index == taken && turn.thread != 0) changed.notifyAll();
    }

    const std::size_t count;
    // Guarded by `guard`.
    std::size_t begun = 0, taken = 0;
    std::vector<char> made;   // of each slot: made and not yet taken
    bool nudged = false;      // since the asking thread last waited
    const Make& make;
    const Take& take;
    const std::function<void()>& whileWaiting;
    const std::function<void()> nudge;
};

/// Adds the time of a call that is not part of another one.
class Workers::CallTimer {
public:
    explicit CallTimer(std::atomic<std::int64_t>& total) noexcept : sum(total) { ++depth; }
    CallTimer(const CallTimer&) = delete;
    CallTimer& operator=(const CallTimer&) = delete;
    ~CallTimer()
    {
        if (--depth > 0) return;
        const auto time = std::chrono::steady_clock::now() - start;
        sum += std::chrono::duration_cast<std::chrono::nanoseconds>(time).count();
    }

private:
    static thread_local int depth;
    std::atomic<std::int64_t>& sum;
    const std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();
};

thread_local int Workers::CallTimer::depth = 0;

Workers& Workers::ofProcess()
{
    static Workers workers;
    return workers;
}

unsigned Workers::usualThreads() noexcept
{
    static const unsigned count = std::min(usableProcessors(), maxThreads);
    return count;
}

Workers::~Workers()
{
    {
        const std::lock_guard held(lock);
        ending = true;
        jobsChanged.notifyAll();
    }
    threads.clear();
}

void Workers::forPieces(unsigned threadCount, std::size_t count, std::size_t pieceSize, const Piece& work)
{
    const std::size_t pieceCount = count / pieceSize + (count % pieceSize != 0);
    threadCount = static_cast<unsigned>(std::min<std::size_t>({threadCount, maxThreads, pieceCount}));
    Pieces job(threadCount, count, pieceSize, work);
    run(job, threadCount);
}

void Workers::inOrder(unsigned threadCount, std::size_t count, std::size_t slots, const Make& make,
                      const Take& take, const std::function<void()>& whileWaiting)
{
    threadCount = static_cast<unsigned>(std::min<std::size_t>({threadCount, maxThreads, count, slots}));
    Ordered job(threadCount, count, slots, make, take, whileWaiting);
    run(job, threadCount);
}

void Workers::run(Job& job, unsigned threadCount)
{
    const CallTimer timer(callTime);
    if (threadCount > 1) enlist(job, threadCount);
    job.workOn(0);
    if (threadCount > 1) {
        const std::lock_guard held(lock);
        std::erase(openJobs, &job);
        while (job.working > 0) job.idle.wait(lock);
    }
    job.throwFailure();
}

/// Lets other threads into the job, and starts those that are missing.
void Workers::enlist(Job& job, unsigned threadCount)
{
    const std::lock_guard held(lock);
    openJobs.push_back(&job);
    try {
        while (threads.size() + 1 < threadCount)
            threads.push_back(std::make_unique<JoinedThread>([this] { serve(); }));
    } catch (...) {
        // The system gives no more threads, or no memory for one: the others do the work.
    }
    for (unsigned i = 1; i < threadCount; ++i) jobsChanged.notifyOne();
}

/// What every thread of the workers does.
void Workers::serve() noexcept
{
    const std::lock_guard held(lock);
    while (true) {
        while (!ending && openJobs.empty()) jobsChanged.wait(lock);
        if (ending) return;
        Job& job = *openJobs.front();
        const unsigned thread = job.entered++;
        if (job.entered == job.wanted) openJobs.erase(openJobs.begin());
        ++job.working;
        lock.unlock();
        job.workOn(thread);
        lock.lock();
        if (--job.working == 0) job.idle.notifyAll();
    }
}

}   // namespace belvor
