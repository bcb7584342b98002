#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <vector>

namespace belvor {

/// A sequence that grows by blocks: elements never move, so references to them stay valid
/// for the store's life, and growing copies nothing.
template <class T>
class BlockStore {
public:
    static constexpr unsigned blockBits = 12;
    static constexpr std::uint32_t blockSize = 1u << blockBits;

    T& operator[](std::uint32_t index) noexcept { return blocks[index >> blockBits][index & (blockSize - 1)]; }
    const T& operator[](std::uint32_t index) const noexcept { return blocks[index >> blockBits][index & (blockSize - 1)]; }

    /// Throws std::bad_alloc when memory, or the 32-bit numbering, is exhausted.
    T& append(const T& element)
    {
        if ((count & (blockSize - 1)) == 0 && (count >> blockBits) == blocks.size()) grow();
        T& place = (*this)[count];
        place = element;
        ++count;
        return place;
    }

    std::uint32_t size() const noexcept { return count; }

    /// The elements of one block lie side by side; block(i) starts with element i × blockSize.
    std::uint32_t blockCount() const noexcept { return (count + blockSize - 1) >> blockBits; }
    std::uint32_t sizeOfBlock(std::uint32_t block) const noexcept
    {
        const std::uint32_t rest = count - (block << blockBits);
        return rest < blockSize ? rest : blockSize;
    }
    T* block(std::uint32_t index) noexcept { return blocks[index].get(); }
    const T* block(std::uint32_t index) const noexcept { return blocks[index].get(); }

private:
    void grow()
    {
        if (count > UINT32_MAX - blockSize) throw std::bad_alloc();
        blocks.push_back(std::make_unique_for_overwrite<T[]>(blockSize));
    }
    std::vector<std::unique_ptr<T[]>> blocks;
    std::uint32_t count = 0;
};

}   // namespace belvor
