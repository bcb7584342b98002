#pragma once

#include "platform/LargeMemory.h"
#include "render/Spans.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace belvor {

/// Runs of pixels gathered by row, in any order, and given back row by row. Each row's lie
/// in blocks, so that adding writes forwards and taking reads forwards. The blocks are used
/// again after restart().
class RowSpans {
public:
    static constexpr int largestWidth = 65535;

    /// Forgets all runs and makes ready for `height` rows.
    void restart(int height)
    {
        rows.assign(static_cast<std::size_t>(height), Row());
        used = 0;
        total = 0;
    }

    /// `span` within the columns 0 to largestWidth − 1.
    void add(int number, const SpanFill& span)
    {
        Row& row = rows[static_cast<std::size_t>(number)];
        if (row.at == row.end) startBlock(row);
        *row.at++ = {span.depth, span.step, span.facet, static_cast<std::uint16_t>(span.first),
                     static_cast<std::uint16_t>(span.end)};
        __builtin_prefetch(
            row.at + 3, 1);   // a row's next lines are nowhere near: they come as late as they are asked for
        ++total;
    }

    std::size_t size() const noexcept { return total; }

    template <class Take>
    void forEach(int number, Take take) const
    {
        const Row& row = rows[static_cast<std::size_t>(number)];
        const Run* end = row.at;   // older blocks are full
        for (const Block* block = row.newest; block;
             block = block->older, end = block ? block->runs + blockSize : nullptr)
            for (const Run* run = block->runs; run != end; ++run)
                take(SpanFill{run->depth, run->step, run->facet, run->first, run->end});
    }

private:
    /// A SpanFill in three quarters of its size: there are millions, and memory is what they cost.
    struct Run {
        double depth, step;
        std::uint32_t facet;
        std::uint16_t first, end;
    };
    static constexpr std::size_t blockSize = 42;
    struct Block {
        const Block* older;
        Run runs[blockSize];
    };
    /// Where a row's next run goes.
    struct Row {
        Run* at = nullptr;
        Run* end = nullptr;
        const Block* newest = nullptr;
    };

    void startBlock(Row& row)
    {
        if (used == blocks.size()) blocks.push_back(static_cast<Block*>(pool.allocate(sizeof(Block))));
        Block* const fresh = blocks[used++];
        fresh->older = row.newest;
        row = {fresh->runs, fresh->runs + blockSize, fresh};
    }

    std::vector<Row> rows;
    MemoryPool pool;
    std::vector<Block*> blocks;   // of the pool; `used` of them are taken
    std::size_t used = 0, total = 0;
};

}   // namespace belvor
