#pragma once

#include <cstddef>
#include <memory>
#include <vector>

namespace belvor {

/// Memory for large tables, in large pages where the system has them: fresh
/// memory costs a fault for each page when it is first touched, which can take longer than
/// what is written there. Aligned for any type. Throws std::bad_alloc.
void* allocateLarge(std::size_t bytes);
/// Gives back what allocateLarge returned for `bytes`.
void freeLarge(void* memory, std::size_t bytes) noexcept;

/// For containers of the standard library that hold large tables.
template <class T>
struct LargeAllocator {
    using value_type = T;

    LargeAllocator() = default;
    template <class U>
    LargeAllocator(const LargeAllocator<U>&) noexcept
    {}
    T* allocate(std::size_t count)
    {
        if (count > static_cast<std::size_t>(-1) / sizeof(T)) throw std::bad_alloc();
        return static_cast<T*>(allocateLarge(count * sizeof(T)));
    }
    void deallocate(T* memory, std::size_t count) noexcept { freeLarge(memory, count * sizeof(T)); }
    friend bool operator==(const LargeAllocator&, const LargeAllocator&) noexcept { return true; }
};

/// A vector for a large table.
template <class T>
using LargeVector = std::vector<T, LargeAllocator<T>>;

/// Hands out memory that stays where it is and is given back all at once, with the pool.
/// Used by one thread at a time.
class MemoryPool {
public:
    /// Aligned for any type. Throws std::bad_alloc.
    void* allocate(std::size_t bytes);
    /// The bytes handed out.
    std::size_t used() const noexcept { return handedOut; }

private:
    struct Free {
        std::size_t bytes = 0;
        void operator()(std::byte* memory) const noexcept { freeLarge(memory, bytes); }
    };
    std::vector<std::unique_ptr<std::byte, Free>> pieces;
    std::byte* at = nullptr;
    std::size_t handedOut = 0;
    std::size_t left = 0;   // bytes of the last piece
    std::size_t nextPiece = 1 << 18;
};

}   // namespace belvor
