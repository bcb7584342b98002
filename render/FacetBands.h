#pragma once

#include "platform/LargeMemory.h"
#include "render/SimpleFacet.h"

#include <cstddef>
#include <vector>

namespace belvor {

/// Simple facets by the bands of rows that they reach into, in any order. Those of a band lie in
/// blocks, so that adding writes forwards and taking reads forwards. The blocks are used again
/// after restart().
class FacetBands {
public:
    /// Forgets all facets and makes ready for so many bands.
    void restart(std::size_t bandCount)
    {
        bands.assign(bandCount, Band());
        used = 0;
    }

    /// Throws std::bad_alloc.
    void add(std::size_t band, const SimpleFacet& facet)
    {
        Band& to = bands[band];
        if (to.at == to.end) startBlock(to);
        *to.at++ = facet;
    }

    /// Calls `take` with each run of facets of a band, a pointer and a number of at most a few hundred.
    template <class Take>
    void forEachRun(std::size_t number, Take take) const
    {
        const Band& band = bands[number];
        const SimpleFacet* end = band.at;   // older blocks are full
        for (const Block* block = band.newest; block;
             block = block->older, end = block ? block->facets + blockSize : nullptr)
            take(block->facets, static_cast<std::size_t>(end - block->facets));
    }

private:
    static constexpr std::size_t blockSize = 170;   // 4 KB
    struct Block {
        const Block* older;
        SimpleFacet facets[blockSize];
    };
    /// Where a band's next facet goes.
    struct Band {
        SimpleFacet* at = nullptr;
        SimpleFacet* end = nullptr;
        const Block* newest = nullptr;
    };

    void startBlock(Band& band)
    {
        if (used == blocks.size()) blocks.push_back(static_cast<Block*>(pool.allocate(sizeof(Block))));
        Block* const fresh = blocks[used++];
        fresh->older = band.newest;
        band = {fresh->facets, fresh->facets + blockSize, fresh};
    }

    std::vector<Band> bands;
    MemoryPool pool;
    std::vector<Block*> blocks;   // of the pool; `used` of them are taken
    std::size_t used = 0;
};

}   // namespace belvor
