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
        rows.assign(static_cast<std::size_t>(height), Row());
        used = 0;
        total = 0;
    }

    void add(int number, const SpanFill& span)
    {
        Row& row = rows[static_cast<std::size_t>(number)];
        if (row.at == row.end) startBlock(row);
        *row.at++ = span;
        ++total;
    }

    std::size_t size() const noexcept { return total; }

    template <class Take>
    void forEach(int number, Take take) const
    {
        const Row& row = rows[static_cast<std::size_t>(number)];
        const SpanFill* end = row.at;   // older blocks are full
        for (const Block* block = row.newest; block; block = block->older, end = block ? block->spans + blockSize : nullptr)
            for (const SpanFill* span = block->spans; span != end; ++span) take(*span);
    }

private:
    static constexpr std::size_t blockSize = 31, chunkSize = 64;
    struct Block {
        const Block* older;
        SpanFill spans[blockSize];
    };
    /// Where a row's next run goes.
    struct Row {
        SpanFill* at = nullptr;
        SpanFill* end = nullptr;
        const Block* newest = nullptr;
    };

    void startBlock(Row& row)
    {
        if (used == chunks.size() * chunkSize) chunks.push_back(std::make_unique_for_overwrite<Block[]>(chunkSize));
        Block& fresh = chunks[used / chunkSize][used % chunkSize];
        ++used;
        fresh.older = row.newest;
        row = {fresh.spans, fresh.spans + blockSize, &fresh};
    }

    std::vector<Row> rows;
    std::vector<std::unique_ptr<Block[]>> chunks;
    std::size_t used = 0, total = 0;
};

}   // namespace belvor
