#include "tests/support/FailingAllocation.h"

#include <cstdlib>

namespace {

constexpr std::size_t noFailure = static_cast<std::size_t>(-1);
thread_local std::size_t beforeFailure = noFailure;
thread_local bool hasFailed = false;

void* countedAllocate(std::size_t bytes)
{
    if (beforeFailure != noFailure && beforeFailure-- == 0) {
        beforeFailure = noFailure;
        hasFailed = true;
        return nullptr;
    }
    return std::malloc(bytes == 0 ? 1 : bytes);
}

}   // namespace

// The program's: what is aligned more than usual is not counted.
void* operator new(std::size_t bytes)
{
    if (void* const memory = countedAllocate(bytes)) return memory;
    throw std::bad_alloc();
}
void* operator new(std::size_t bytes, const std::nothrow_t&) noexcept { return countedAllocate(bytes); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { std::free(memory); }

namespace belvor::test {

FailingAllocation::FailingAllocation(std::size_t allocations) noexcept
{
    hasFailed = false;
    beforeFailure = allocations;
}
FailingAllocation::~FailingAllocation() { beforeFailure = noFailure; }
bool FailingAllocation::failed() const noexcept { return hasFailed; }

}   // namespace belvor::test
