#pragma once

#include "platform/LargeMemory.h"

#include <cstdint>
#include <memory>
#include <new>
#include <type_traits>
#include <vector>

namespace belvor {

/// A sequence that grows by blocks: elements never move, so references to them stay valid
/// for the store's life, and growing copies nothing. The elements end with the pool that
/// their memory comes from, without being destroyed.
template <class T>
class BlockStore {
    static_assert(std::is_trivially_copyable_v<T>);

public:
    /// `memory` must outlive the store.
    explicit BlockStore(MemoryPool& memory) noexcept : pool(memory) {}

    static constexpr unsigned blockBits = 12;
    static constexpr std::uint32_t blockSize = 1u << blockBits;

    T& operator[](std::uint32_t index) noexcept
    {
        return blocks[index >> blockBits][index & (blockSize - 1)];
    }
    const T& operator[](std::uint32_t index) const noexcept
    {
        return blocks[index >> blockBits][index & (blockSize - 1)];
    }

    /// Appends an element made from its members, without a copy. Throws std::bad_alloc when
    /// memory, or the 32-bit numbering, is exhausted.
    template <class... Members>
    T& append(const Members&... members)
    {
        if ((count & (blockSize - 1)) == 0 && (count >> blockBits) == blocks.size()) grow();
        T* const added = new (&(*this)[count]) T{members...};
        ++count;
        return *added;
    }

    /// Appends `number` elements, the i-th as `make(i)` gives it.
    template <class Make>
    void appendAll(std::uint32_t number, Make make)
    {
        for (std::uint32_t done = 0; done < number;) {
            if ((count & (blockSize - 1)) == 0 && (count >> blockBits) == blocks.size()) grow();
            T* const added = &(*this)[count];
            const std::uint32_t room = blockSize - (count & (blockSize - 1));
            if (done == 0 && number <= room) {   // nearly always: unrolled where `number` is a constant
                for (std::uint32_t i = 0; i < number; ++i) std::construct_at(added + i, make(i));
                count += number;
                return;
            }
            const std::uint32_t left = number - done, these = left < room ? left : room;
            for (std::uint32_t i = 0; i < these; ++i) std::construct_at(added + i, make(done + i));
            done += these;
            count += these;
        }
    }

    std::uint32_t size() const noexcept { return count; }
    /// Takes off the last elements; at most as many as there are stay.
    void shorten(std::uint32_t size) noexcept { count = size; }

    /// `number` elements from `index` on, when they lie side by side in memory; else none.
    const T* sideBySide(std::uint32_t index, std::uint32_t number) const noexcept
    {
        const std::uint32_t inBlock = index & (blockSize - 1);
        return inBlock + number <= blockSize ? blocks[index >> blockBits] + inBlock : nullptr;
    }

    /// Every element, in order.
    template <class Visit>
    void forEach(Visit visit) const
    {
        for (std::uint32_t first = 0; first < count; first += blockSize) {
            const T* const block = blocks[first >> blockBits];
            const std::uint32_t number = count - first < blockSize ? count - first : blockSize;
            for (std::uint32_t i = 0; i < number; ++i) visit(block[i]);
        }
    }

private:
    void grow()
    {
        if (count > UINT32_MAX - blockSize) throw std::bad_alloc();
        blocks.push_back(static_cast<T*>(pool.allocate(blockSize * sizeof(T))));
    }

    MemoryPool& pool;
    std::vector<T*> blocks;
    std::uint32_t count = 0;
};

}   // namespace belvor
