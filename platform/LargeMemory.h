#pragma once

#include <cstddef>
#include <memory>
#include <new>
#include <type_traits>
#include <vector>

namespace belvor {

/// Memory for large tables, in large pages where the system has them: fresh
/// memory costs a fault for each page when it is first touched, which can take longer than
/// what is written there. Aligned for any type. Throws std::bad_alloc.
void* allocateLarge(std::size_t bytes);
/// Gives back what allocateLarge returned for `bytes`.
void freeLarge(void* memory, std::size_t bytes) noexcept;

/// The size that large pages have where allocateLarge uses them.
constexpr std::size_t largePage = std::size_t{2} << 20;
/// Has the system provide the large page at `page` now, so that writing to it causes no fault later. Does not
/// change what it holds: other threads may use it meanwhile. Does nothing where the system cannot do that.
void provideLargePage(void* page) noexcept;
/// The same of the pages that hold these bytes, of a mapped file for example, for reading them.
void provideForReading(const void* bytes, std::size_t count) noexcept;
/// Whether these two do anything.
bool canProvidePages() noexcept;

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

/// The same with elements that resize() leaves unset: it touches no memory.
template <class T>
struct UnsetAllocator : LargeAllocator<T> {
    static_assert(std::is_trivially_default_constructible_v<T>);
    UnsetAllocator() = default;
    template <class U>
    UnsetAllocator(const UnsetAllocator<U>&) noexcept
    {}
    /// What resize() asks for: without a value, where the standard allocator gives zero.
    template <class U>
    void construct(U* at) noexcept
    {
        ::new (static_cast<void*>(at)) U;
    }
};
template <class T>
using UnsetVector = std::vector<T, UnsetAllocator<T>>;

/// Hands out memory that stays where it is and is given back all at once, with the pool.
/// Used by one thread at a time.
class MemoryPool {
public:
    /// Aligned for any type. Throws std::bad_alloc.
    void* allocate(std::size_t bytes);
    /// A large page that allocate() is to hand out within the next `bytes`, if there is such a whole page;
    /// else null. Gives each page once: for provideLargePage(), on any thread, while the pool lives.
    void* takeFreshPage(std::size_t bytes) noexcept;
    /// The bytes handed out.
    std::size_t used() const noexcept { return handedOut; }

private:
    struct Free {
        std::size_t bytes = 0;
        void operator()(std::byte* memory) const noexcept { freeLarge(memory, bytes); }
    };
    std::vector<std::unique_ptr<std::byte, Free>> pieces;
    std::byte* at = nullptr;
    std::byte* fresh = nullptr;   // large pages of the last piece from here on have not been given
    std::size_t handedOut = 0;
    std::size_t left = 0;   // bytes of the last piece
    std::size_t nextPiece = 1 << 18;
};

}   // namespace belvor
