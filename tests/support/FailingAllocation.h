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

}   // namespace belvor::test
