#include "tests/window/Watchdog.h"

#include "tests/window/Program.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace belvor::window::Watchdog {

namespace {

std::mutex lock;
std::condition_variable change;
Program* guarded = nullptr;
bool over = true, tooLate = false;
std::thread waiting;

void watch(int seconds)
{
    std::unique_lock hold(lock);
    if (change.wait_for(hold, std::chrono::seconds(seconds), [] { return over; })) return;
    tooLate = true;
    if (guarded) guarded->kill();
}

}   // namespace

void begin(int seconds)
{
    over = tooLate = false;
    waiting = std::thread(watch, seconds);
}

void guard(Program& program)
{
    const std::lock_guard hold(lock);
    guarded = &program;
    if (tooLate) throw Failure("the test's time is over");
}

void release() noexcept
{
    const std::lock_guard hold(lock);
    guarded = nullptr;
}

bool end()
{
    {
        const std::lock_guard hold(lock);
        over = true;
    }
    change.notify_all();
    waiting.join();
    return !tooLate;
}

}   // namespace belvor::window::Watchdog
