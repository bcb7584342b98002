#include "platform/LargeMemory.h"

#include <algorithm>
#include <cstdint>
#include <new>
#include <utility>

#ifdef __linux__
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace belvor {

#ifdef __linux__
void* allocateLarge(std::size_t bytes)
{
    if (bytes < largePage) return ::operator new(bytes);
    if (bytes > static_cast<std::size_t>(-1) - largePage) throw std::bad_alloc();
    const std::size_t whole = (bytes + largePage - 1) / largePage * largePage;
    void* const memory = ::operator new(whole, std::align_val_t(largePage));
    madvise(memory, whole, MADV_HUGEPAGE);   // only a hint: small pages work as well
    return memory;
}

void freeLarge(void* memory, std::size_t bytes) noexcept
{
    if (bytes < largePage) ::operator delete(memory);
    else ::operator delete(memory, std::align_val_t(largePage));
}

#ifdef MADV_POPULATE_WRITE
bool canProvidePages() noexcept { return true; }   // older systems refuse: a page comes when it is used

void provideLargePage(void* page) noexcept { madvise(page, largePage, MADV_POPULATE_WRITE); }

void provideForReading(const void* bytes, std::size_t count) noexcept
{
    static const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    const std::size_t before = reinterpret_cast<std::uintptr_t>(bytes) % page;
    madvise(static_cast<char*>(const_cast<void*>(bytes)) - before, before + count, MADV_POPULATE_READ);
}
#endif
#else
void* allocateLarge(std::size_t bytes) { return ::operator new(bytes); }

void freeLarge(void* memory, std::size_t) noexcept { ::operator delete(memory); }

#endif

#ifndef MADV_POPULATE_WRITE
bool canProvidePages() noexcept { return false; }

void provideLargePage(void*) noexcept {}

void provideForReading(const void*, std::size_t) noexcept {}
#endif

void* MemoryPool::allocate(std::size_t bytes)
{
    constexpr std::size_t alignment = alignof(std::max_align_t), largestPiece = 32u << 20;
    bytes = (bytes + alignment - 1) / alignment * alignment;
    if (bytes > left) {
        const std::size_t size = std::max(bytes, nextPiece);
        pieces.push_back(
            std::unique_ptr<std::byte, Free>(static_cast<std::byte*>(allocateLarge(size)), Free{size}));
        fresh = at = pieces.back().get();
        left = size;
        nextPiece = std::min(2 * nextPiece, largestPiece);
    }
    std::byte* const memory = at;
    at += bytes;
    left -= bytes;
    handedOut += bytes;
    return memory;
}

void* MemoryPool::takeFreshPage(std::size_t bytes) noexcept
{
    if (pieces.empty() || pieces.back().get_deleter().bytes < largePage) return nullptr;
    while (fresh < at) fresh += largePage;   // those in use already
    std::byte* const limit = at + std::min(bytes, left);
    if (fresh >= limit || static_cast<std::size_t>(limit - fresh) < largePage) return nullptr;
    return std::exchange(fresh, fresh + largePage);
}

}   // namespace belvor
