#pragma once

#include <cstddef>
#include <new>

namespace belvor::test {

/// While it lives, one allocation by operator new on this thread fails: the one after
/// `allocations` others. One at a time.
class FailingAllocation {
public:
    explicit FailingAllocation(std::size_t allocations) noexcept;
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;
    ~FailingAllocation();
    /// Whether it has come to that.
    bool failed() const noexcept;
};

/// Calls `action` with its first allocation failing, then its second, and so on until none
/// fails. Each failure must come out as std::bad_alloc, or `action` succeeds without what the
/// memory was for. The number of failures.
template <class Action>
std::size_t failEachAllocation(Action action)
{
    for (std::size_t n = 0;; ++n) {
        FailingAllocation failing(n);
        try {
            action();
        } catch (const std::bad_alloc&) {
            if (!failing.failed()) throw;
        }
        if (!failing.failed()) return n;
    }
}

}   // namespace belvor::test
