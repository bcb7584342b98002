#include "platform/LargeMemory.h"

#include <algorithm>
#include <cstdlib>
#include <new>

#ifdef __linux__
#include <sys/mman.h>
#endif

namespace belvor {

void* allocateLarge(std::size_t bytes)
{
#ifdef __linux__
    constexpr std::size_t largePage = 2u << 20;
    if (bytes >= largePage && bytes <= static_cast<std::size_t>(-1) - largePage) {
        const std::size_t whole = (bytes + largePage - 1) / largePage * largePage;
        void* const memory = std::aligned_alloc(largePage, whole);
        if (!memory) throw std::bad_alloc();
        madvise(memory, whole, MADV_HUGEPAGE);   // a wish: small pages do as well
        return memory;
    }
#endif
    void* const memory = std::malloc(bytes);
    if (!memory) throw std::bad_alloc();
    return memory;
}

void freeLarge(void* memory) noexcept { std::free(memory); }

void* MemoryPool::allocate(std::size_t bytes)
{
    constexpr std::size_t alignment = alignof(std::max_align_t), largestPiece = 32u << 20;
    bytes = (bytes + alignment - 1) / alignment * alignment;
    if (bytes > left) {
        const std::size_t size = std::max(bytes, nextPiece);
        pieces.push_back(std::unique_ptr<std::byte, Free>(static_cast<std::byte*>(allocateLarge(size))));
        at = pieces.back().get();
        left = size;
        nextPiece = std::min(2 * nextPiece, largestPiece);
    }
    std::byte* const memory = at;
    at += bytes;
    left -= bytes;
    return memory;
}

}   // namespace belvor
