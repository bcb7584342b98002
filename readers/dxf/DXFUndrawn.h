#pragma once

#include "readers/dxf/DXFBlock.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <vector>

namespace belvor {

/// Counts what insertions skip without a walk through them, where a walk would draw nothing.
/// Blocks that insert one another make paths without number; equal stretches of them are
/// counted once. Counts are exact, up to a limit on the memory for stretches: beyond it each
/// block of the knot counts as met once.
class DXFUndrawn {
public:
    /// `pause` is called now and then and may throw.
    DXFUndrawn(SkippedEntities& list, std::function<void()> pause) : skipped(list), report(std::move(pause))
    {}

    /// The first walk over `block` is done and its state is known.
    void addSummarised(DXFBlock& block) { summarised.push_back(&block); }

    /// Counts that many cells of `block`, which is not being expanded. False, and nothing
    /// counted, when they may draw something.
    bool count(DXFBlock& block, std::uint64_t cells);

    /// Counts the INSERTs that would have closed a circle.
    void countInItself(const DXFBlock& block, std::uint64_t times)
    {
        skipped.add("INSERT", SkippedEntities::Why::blockInItself, block.name, times);
    }

    /// Brings what was counted into the list.
    void settle();
    /// Does that, and forgets what the blocks' walks have shown.
    void forget();

private:
    /// What one walk through a block comes to, by block.
    struct Share {
        DXFBlock* block;
        std::uint64_t walked;     ///< Cells of which the own skips count.
        std::uint64_t counted;    ///< Cells that count with all they insert.
        std::uint64_t inItself;   ///< INSERTs that close a circle.
    };
    using Tally = std::vector<Share>;   // by block
    using Key = std::vector<const DXFBlock*>;
    struct Frame {
        DXFBlock* block;
        Key key;
        std::map<DXFBlock*, DXFBlockSummary::Inserted>::const_iterator next;
        Tally tally;
    };

    template <class Visit, class Hit>
    bool search(DXFBlock& from, Visit visit, Hit hit);
    bool drawsNothing(DXFBlock& from);
    Key keyOf(DXFBlock& block);
    const Tally* tallyOf(DXFBlock& block);
    const Tally* walkCircles(std::vector<Frame>& frames);
    void countOnce(DXFBlock& block, std::uint64_t cells);
    void apply(const Tally& tally, std::uint64_t cells);
    static void add(Tally& to, const Tally& more, std::uint64_t times);

    SkippedEntities& skipped;
    std::function<void()> report;
    std::vector<DXFBlock*> summarised;   // in the order in which their first walks ended
    std::map<Key, Tally> known;          // by a block and the blocks under way that it can reach
    std::size_t knownNumbers = 0;
    std::uint64_t searches = 0;
};

}   // namespace belvor
