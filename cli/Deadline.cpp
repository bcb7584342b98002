#include "cli/Deadline.h"

#include "cli/Failures.h"
#include "platform/OutputFile.h"
#include "platform/Thread.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <thread>

namespace belvor {
namespace {

using Clock = std::chrono::steady_clock;

constexpr Clock::rep never = std::numeric_limits<Clock::rep>::max();
std::atomic<Clock::rep> deadline{never};

}   // namespace

void watchDeadline(std::function<void()> tell)
{
    startThread([tell = std::move(tell)] {
        while (Clock::now().time_since_epoch().count() < deadline)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        tell();
        removeUnfinishedFiles();
        std::_Exit(timedOut);
    });
}

void setDeadline(double seconds) noexcept
{
    constexpr double longest = 1e9;   // 30 years, which a count of nanoseconds holds
    if (!(seconds > 0.0)) {
        deadline = never;
        return;
    }
    const auto span = std::chrono::duration<double>(std::min(seconds, longest));
    deadline = (Clock::now() + std::chrono::duration_cast<Clock::duration>(span)).time_since_epoch().count();
}

}   // namespace belvor
