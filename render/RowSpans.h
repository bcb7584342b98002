#pragma once

#include "render/Spans.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace belvor {

/// Runs of pixels gathered by row, in any order, and given back row by row. Each row's lie
/// in blocks, so that adding writes forwards and taking reads forwards. The blocks are used
/// again after restart().
class RowSpans {
public:
    /// Forgets all runs and makes ready for `height` rows.
    void restart(int height)
    {
        heads.assign(static_cast<std::size_t>(height), none);
        used = 0;
        total = 0;
    }

    void add(int row, const SpanFill& span)
    {
        std::uint32_t& head = heads[static_cast<std::size_t>(row)];
        if (head == none || block(head).count == blockSize) head = newBlock(head);
        Block& to = block(head);
        to.spans[to.count++] = span;
        ++total;
    }

    std::size_t size() const noexcept { return total; }

    template <class Take>
    void forEach(int row, Take take) const
    {
        for (std::uint32_t i = heads[static_cast<std::size_t>(row)]; i != none; i = block(i).next)
            for (std::uint32_t k = 0; k < block(i).count; ++k) take(block(i).spans[k]);
    }

private:
    static constexpr std::uint32_t none = 0xFFFFFFFF, blockSize = 31, chunkSize = 64;
    struct Block {
        std::uint32_t next, count;
        SpanFill spans[blockSize];
    };

    Block& block(std::uint32_t i) const noexcept { return chunks[i / chunkSize][i % chunkSize]; }
    std::uint32_t newBlock(std::uint32_t next)
    {
        if (used == chunks.size() * chunkSize) chunks.push_back(std::make_unique_for_overwrite<Block[]>(chunkSize));
        Block& fresh = block(used);
        fresh.next = next;
        fresh.count = 0;
        return used++;
    }

    std::vector<std::uint32_t> heads;
    std::vector<std::unique_ptr<Block[]>> chunks;
    std::uint32_t used = 0;
    std::size_t total = 0;
};

}   // namespace belvor
