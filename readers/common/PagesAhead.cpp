#include "readers/common/PagesAhead.h"

#include "platform/Workers.h"

#include <algorithm>
#include <mutex>

namespace belvor {

void PagesAhead::during(const std::function<void()>& read)
{
    struct Ending {
        PagesAhead& pages;
        ~Ending() { pages.end(); }   // also when the reading fails: the other thread waits for that
    };
    bool begun = false;   // of use to the asking thread only
    const auto work = [&](std::size_t, std::size_t, const Workers::Turn& turn) {
        if (turn.thread != 0) return provide();
        if (begun) return;   // no other thread has come
        begun = true;
        const Ending ending{*this};
        read();
    };
    Workers::ofProcess().forPieces(2, 2, 1, work);
}

void PagesAhead::reached(const char* at) noexcept
{
    fresh.offer(static_cast<std::size_t>(fileEnd - at));
    const std::lock_guard held(lock);
    position = at;
    changed.notifyOne();
}

void PagesAhead::end() noexcept
{
    over = true;
    const std::lock_guard held(lock);   // it looks, or it waits
    changed.notifyOne();
}

/// What the other thread does. In short stretches: the reading may end meanwhile.
void PagesAhead::provide() noexcept
{
    constexpr std::ptrdiff_t stretch = 256 << 10, farthest = 2 * step;
    std::unique_lock held(lock);
    const char* provided = position;
    for (const char* seen = nullptr; !over;) {
        if (position == seen) {
            changed.wait(lock);
            continue;
        }
        seen = position;
        held.unlock();
        fresh.provide();
        provided = std::max(provided, seen);
        const char* const to = seen + std::min(farthest, fileEnd - seen);
        while (!over && provided != to) {
            const std::ptrdiff_t next = std::min(stretch, to - provided);
            provideForReading(provided, static_cast<std::size_t>(next));
            provided += next;
        }
        held.lock();
    }
}

}   // namespace belvor
