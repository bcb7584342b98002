#pragma once

#include "platform/LargeMemory.h"
#include "platform/Prefetch.h"

#include <cstddef>
#include <vector>

namespace belvor {

/// Lists of plain items, one for each band of rows, in any order. The items of a list lie in blocks, so
/// that adding writes forwards and taking reads forwards. The blocks are used again after restart().
template <class Item>
class BandLists {
public:
    /// Forgets all items and makes ready for so many lists.
    void restart(std::size_t listCount)
    {
        lists.assign(listCount, List());
        used = 0;
    }

    /// A new item, to be filled. Throws std::bad_alloc.
    Item& add(std::size_t list)
    {
        List& to = lists[list];
        if (to.at == to.end) startBlock(to);
        return *to.at++;
    }

    /// Calls `take` with each run of items of a list, a pointer and a number of at most a few hundred.
    template <class Take>
    void forEachRun(std::size_t number, Take take) const
    {
        const List& list = lists[number];
        const Item* end = list.at;   // older blocks are full
        for (const Block* block = list.newest; block;
             block = block->older, end = block ? block->items + blockSize : nullptr) {
            fetch(block->older);
            take(block->items, static_cast<std::size_t>(end - block->items));
        }
    }

private:
    static constexpr std::size_t blockSize = 4080 / sizeof(Item);   // of 4 KB
    struct Block {
        const Block* older;
        Item items[blockSize];
    };
    /// Blocks lie anywhere: nothing foretells the next one.
    static void fetch(const Block* block) noexcept
    {
        for (std::size_t at = 0; block && at < sizeof(Block); at += 64)
            prefetch(reinterpret_cast<const char*>(block) + at);
    }

    /// Where a list's next item goes.
    struct List {
        Item* at = nullptr;
        Item* end = nullptr;
        const Block* newest = nullptr;
    };

    void startBlock(List& list)
    {
        if (used == blocks.size()) blocks.push_back(static_cast<Block*>(pool.allocate(sizeof(Block))));
        Block* const fresh = blocks[used++];
        if (used < blocks.size()) fetch(blocks[used]);
        fresh->older = list.newest;
        list = {fresh->items, fresh->items + blockSize, fresh};
    }

    std::vector<List> lists;
    MemoryPool pool;
    std::vector<Block*> blocks;   // of the pool; `used` of them are taken
    std::size_t used = 0;
};

}   // namespace belvor
