#pragma once

#include <functional>
#include <memory>
#include <string>

namespace belvor {

/// Mutual exclusion between threads, not recursive; for std::lock_guard.
class Lock {
public:
    Lock();
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;
    ~Lock();
    void lock() noexcept;
    void unlock() noexcept;

private:
    friend class Condition;
    struct Body;
    std::unique_ptr<Body> body;
};

/// Threads wait here for a change of what a Lock guards. A wait may end without a change.
class Condition {
public:
    Condition();
    Condition(const Condition&) = delete;
    Condition& operator=(const Condition&) = delete;
    ~Condition();
    /// Releases `lock`, which the caller holds, waits, and takes it again.
    void wait(Lock& lock) noexcept;
    void notifyOne() noexcept;
    void notifyAll() noexcept;

private:
    struct Body;
    std::unique_ptr<Body> body;
};

/// A signal from one thread to another. It resets itself when one wait has seen it, and
/// setting it twice before that counts once.
class Event {
public:
    /// Not signalled. `owner` tells failures apart. Throws Win32Error "CreateEvent in " + owner.
    explicit Event(std::string owner);
    Event(const Event&) = delete;
    Event& operator=(const Event&) = delete;
    ~Event();
    /// Throws Win32Error "SetEvent in " + owner.
    void set();
    /// Returns when the event has been set, without a time-out. Throws Win32Error "WaitForSingleObject".
    void wait();

private:
    struct Body;
    std::string owner;
    std::unique_ptr<Body> body;
};

/// Runs `procedure`, which must let no exception out, on a new thread of below-normal
/// priority (where the system has that for a thread). Nobody ever joins it. Throws
/// Win32Error "CreateThread".
void startThread(std::function<void()> procedure);

/// A thread of below-normal priority (where the system has that for a thread) that is waited for.
class JoinedThread {
public:
    /// Runs `procedure`, which must let no exception out. Throws Win32Error "CreateThread".
    explicit JoinedThread(std::function<void()> procedure);
    JoinedThread(const JoinedThread&) = delete;
    JoinedThread& operator=(const JoinedThread&) = delete;
    /// Waits until the procedure has returned.
    ~JoinedThread();

private:
    struct Body;
    std::unique_ptr<Body> body;
};

}   // namespace belvor
