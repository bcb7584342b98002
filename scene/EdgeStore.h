#pragma once

#include "platform/LargeMemory.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <new>
#include <span>
#include <vector>

namespace belvor {

/// One side of a facet, between two vertices by their indices in the store.
struct Edge {
    std::uint32_t from, to;
};

/// The edges of a model. It grows by blocks. One that holds only the sides of quadrilaterals, each with four
/// vertices of its own right behind those of the one before, takes no memory: its edges are worked out. Large
/// drawings are made of such.
class EdgeStore {
public:
    /// `memory` must outlive the store.
    explicit EdgeStore(MemoryPool& memory) noexcept : pool(memory) {}

    Edge operator[](std::uint32_t index) const noexcept
    {
        const Block& block = blocks[index >> blockBits];
        return block.edges ? block.edges[index & inBlock] : block.sideOfQuadrilateral(index);
    }

    // All that append throw std::bad_alloc when memory, or the 32-bit numbering, is exhausted.

    void append(const Edge& edge)
    {
        roomForOne() = edge;
        ++count;
    }
    void append(std::span<const Edge> edges)
    {
        while (!edges.empty()) {
            Edge* const to = &roomForOne();
            const std::size_t these = std::min<std::size_t>(edges.size(), blockSize - (count & inBlock));
            std::copy_n(edges.begin(), these, to);
            count += static_cast<std::uint32_t>(these);
            edges = edges.subspan(these);
        }
    }
    /// The sides of a polygon of `corners` vertices from `first` on.
    void appendLoop(std::uint32_t first, std::uint32_t corners)
    {
        if (corners == 4 && appendQuadrilateral(first)) return;
        for (std::uint32_t i = 0; i < corners; ++i)
            append(Edge{first + i, first + (i + 1 == corners ? 0 : i + 1)});
    }

    std::uint32_t size() const noexcept { return count; }

    /// `number` edges from `index` on, when they lie side by side in memory; else none.
    const Edge* sideBySide(std::uint32_t index, std::uint32_t number) const noexcept
    {
        const std::uint32_t first = index & inBlock;
        const Edge* const edges = blocks[index >> blockBits].edges;
        return edges && first + number <= blockSize ? edges + first : nullptr;
    }

private:
    static constexpr unsigned blockBits = 12;
    static constexpr std::uint32_t blockSize = 1u << blockBits, inBlock = blockSize - 1;

    struct Block {
        Edge* edges;           // null: those of quadrilaterals
        std::uint32_t shift;   // then: from an edge to the vertex that it starts at

        Edge sideOfQuadrilateral(std::uint32_t index) const noexcept
        {
            const std::uint32_t from = index + shift;
            return {from, index % 4 == 3 ? from - 3 : from + 1};
        }
    };

    bool appendQuadrilateral(std::uint32_t first)
    {
        if ((count & inBlock) == 0) addBlock({nullptr, first - count});
        const Block& last = blocks.back();
        if (last.edges || count + last.shift != first) return false;
        count += 4;
        return true;
    }

    Edge& roomForOne()
    {
        if ((count & inBlock) == 0) addBlock({newEdges(), 0});
        Block& last = blocks.back();
        if (!last.edges) {
            Edge* const edges = newEdges();
            for (std::uint32_t index = count & ~inBlock; index != count; ++index)
                edges[index & inBlock] = last.sideOfQuadrilateral(index);
            last.edges = edges;
        }
        return last.edges[count & inBlock];
    }

    void addBlock(const Block& block)
    {
        if (count > UINT32_MAX - blockSize) throw std::bad_alloc();
        blocks.push_back(block);
    }
    Edge* newEdges() { return static_cast<Edge*>(pool.allocate(blockSize * sizeof(Edge))); }

    MemoryPool& pool;
    std::vector<Block> blocks;
    std::uint32_t count = 0;
};

}   // namespace belvor
