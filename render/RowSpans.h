#pragma once

#include "platform/LargeMemory.h"
#include "render/Spans.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace belvor {

/// Spans gathered by row, in any order, and given back row by row. Those of a row lie in
/// blocks, so that adding writes forwards and taking reads forwards. The blocks are used
/// again after restart().
class RowSpans {
public:
    static constexpr int maxWidth = 65535;

    /// Forgets all spans and makes ready for `height` rows.
    void restart(int height)
    {
        rows.assign(static_cast<std::size_t>(height), Row());
        used = 0;
        total = 0;
    }

    /// `span` within the columns 0 to maxWidth − 1.
    void add(int number, const SpanFill& span)
    {
        Row& row = rows[static_cast<std::size_t>(number)];
        if (row.at == row.end) startBlock(row);
        *row.at++ = {span.depth, span.step, span.facet, static_cast<std::uint16_t>(span.first),
                     static_cast<std::uint16_t>(span.end)};
        __builtin_prefetch(row.at + 3,
                           1);   // rows are filled in random order: fetch the next cache lines early
        ++total;
    }

    std::size_t size() const noexcept { return total; }

    template <class Take>
    void forEach(int number, Take take) const
    {
        const Row& row = rows[static_cast<std::size_t>(number)];
        const PackedSpan* end = row.at;   // older blocks are full
        for (const Block* block = row.newest; block;
             block = block->older, end = block ? block->spans + blockSize : nullptr)
            for (const PackedSpan* span = block->spans; span != end; ++span)
                take(SpanFill{span->depth, span->step, span->facet, span->first, span->end});
    }

private:
    /// A SpanFill in three quarters of its size: there are millions, and reading them back is bound by
    /// memory.
    struct PackedSpan {
        double depth, step;
        std::uint32_t facet;
        std::uint16_t first, end;
    };
    static constexpr std::size_t blockSize = 42;
    struct Block {
        const Block* older;
        PackedSpan spans[blockSize];
    };
    /// Where a row's next span goes.
    struct Row {
        PackedSpan* at = nullptr;
        PackedSpan* end = nullptr;
        const Block* newest = nullptr;
    };

    void startBlock(Row& row)
    {
        if (used == blocks.size()) blocks.push_back(static_cast<Block*>(pool.allocate(sizeof(Block))));
        Block* const fresh = blocks[used++];
        fresh->older = row.newest;
        row = {fresh->spans, fresh->spans + blockSize, fresh};
    }

    std::vector<Row> rows;
    MemoryPool pool;
    std::vector<Block*> blocks;   // of the pool; `used` of them are taken
    std::size_t used = 0, total = 0;
};

}   // namespace belvor
