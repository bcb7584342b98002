#include "platform/Thread.h"

#include "platform/Win32Error.h"

#include <utility>

#ifdef _WIN32
#include "platform/win32/Windows.h"
#else
#include <condition_variable>
#include <mutex>
#include <system_error>
#include <thread>
#endif

namespace belvor {

#ifdef _WIN32

struct Lock::Body {
    CRITICAL_SECTION section;
};

Lock::Lock() : body(std::make_unique<Body>()) { InitializeCriticalSection(&body->section); }
Lock::~Lock() { DeleteCriticalSection(&body->section); }
void Lock::lock() noexcept { EnterCriticalSection(&body->section); }
void Lock::unlock() noexcept { LeaveCriticalSection(&body->section); }

struct Condition::Body {
    CONDITION_VARIABLE variable;
};

Condition::Condition() : body(std::make_unique<Body>()) { InitializeConditionVariable(&body->variable); }
Condition::~Condition() = default;
void Condition::wait(Lock& lock) noexcept
{
    SleepConditionVariableCS(&body->variable, &lock.body->section, INFINITE);
}
void Condition::notifyOne() noexcept { WakeConditionVariable(&body->variable); }
void Condition::notifyAll() noexcept { WakeAllConditionVariable(&body->variable); }

struct Event::Body {
    HANDLE handle;
};

Event::Event(std::string name) : owner(std::move(name)), body(std::make_unique<Body>())
{
    body->handle = CreateEventA(nullptr, FALSE, FALSE, nullptr);
    if (!body->handle) throw Win32Error("CreateEvent in " + owner);
}

Event::~Event() { CloseHandle(body->handle); }

void Event::set()
{
    if (!SetEvent(body->handle)) throw Win32Error("SetEvent in " + owner);
}

void Event::wait()
{
    if (WaitForSingleObject(body->handle, INFINITE) == WAIT_FAILED) throw Win32Error("WaitForSingleObject");
}

namespace {

DWORD WINAPI runProcedure(LPVOID parameter)
{
    const std::unique_ptr<std::function<void()>> procedure(static_cast<std::function<void()>*>(parameter));
    (*procedure)();
    return 0;
}

}   // namespace

/// A running thread of below-normal priority.
static HANDLE createThread(std::function<void()> procedure)
{
    // As much stack as other systems give a thread: nested drawings are read recursively.
    constexpr SIZE_T stackSize = 8u << 20;
    auto parameter = std::make_unique<std::function<void()>>(std::move(procedure));
    const HANDLE thread = CreateThread(nullptr, stackSize, runProcedure, parameter.get(),
                                       STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
    if (!thread) throw Win32Error("CreateThread");
    static_cast<void>(parameter.release());   // the thread's now
    SetThreadPriority(thread, THREAD_PRIORITY_BELOW_NORMAL);
    return thread;
}

void startThread(std::function<void()> procedure) { CloseHandle(createThread(std::move(procedure))); }

struct JoinedThread::Body {
    HANDLE handle;
};

JoinedThread::JoinedThread(std::function<void()> procedure) : body(std::make_unique<Body>())
{
    body->handle = createThread(std::move(procedure));
}

JoinedThread::~JoinedThread()
{
    WaitForSingleObject(body->handle, INFINITE);
    CloseHandle(body->handle);
}

#else

struct Lock::Body {
    std::mutex mutex;
};

Lock::Lock() : body(std::make_unique<Body>()) {}
Lock::~Lock() = default;
void Lock::lock() noexcept { body->mutex.lock(); }
void Lock::unlock() noexcept { body->mutex.unlock(); }

struct Condition::Body {
    std::condition_variable variable;
};

Condition::Condition() : body(std::make_unique<Body>()) {}
Condition::~Condition() = default;
void Condition::wait(Lock& lock) noexcept
{
    std::unique_lock held(lock.body->mutex, std::adopt_lock);
    body->variable.wait(held);
    held.release();
}
void Condition::notifyOne() noexcept { body->variable.notify_one(); }
void Condition::notifyAll() noexcept { body->variable.notify_all(); }

struct Event::Body {
    std::mutex mutex;
    std::condition_variable changed;
    bool signalled = false;
};

Event::Event(std::string name) : owner(std::move(name)), body(std::make_unique<Body>()) {}
Event::~Event() = default;

void Event::set()
{
    // Notified under the mutex: the woken thread may destroy the event at once.
    const std::lock_guard guard(body->mutex);
    body->signalled = true;
    body->changed.notify_one();
}

void Event::wait()
{
    std::unique_lock guard(body->mutex);
    body->changed.wait(guard, [this] { return body->signalled; });
    body->signalled = false;
}

void startThread(std::function<void()> procedure)
try {
    std::thread(std::move(procedure)).detach();
} catch (const std::system_error& failure) {
    throw Win32Error("CreateThread", static_cast<std::uint32_t>(failure.code().value()));
}

struct JoinedThread::Body {
    std::thread thread;
};

JoinedThread::JoinedThread(std::function<void()> procedure)
try : body(new Body{std::thread(std::move(procedure))}) {
} catch (const std::system_error& failure) {
    throw Win32Error("CreateThread", static_cast<std::uint32_t>(failure.code().value()));
}

JoinedThread::~JoinedThread() { body->thread.join(); }

#endif

}   // namespace belvor
