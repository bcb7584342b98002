#include "readers/dxf/DXFTally.h"

#include "readers/dxf/DXFBlock.h"

#include <set>
#include <vector>

namespace belvor {
namespace {

bool drawsItself(const DXFTally& tally) noexcept
{
    for (const auto& [type, count] : tally.types)
        if (count.drawn != 0) return true;
    return false;
}

/// The blocks of which an insertion draws something: those that do themselves, and those that insert them.
std::set<const DXFBlock*> drawingBlocks(const DXFBlocks& blocks)
{
    std::map<const DXFBlock*, std::vector<const DXFBlock*>> insertedBy;
    std::vector<const DXFBlock*> found;
    const auto add = [&](const DXFBlock& block) {
        if (drawsItself(block.tally)) found.push_back(&block);
        for (const auto& [inserted, insertions] : block.tally.insertions)
            if (insertions.entered) insertedBy[inserted].push_back(&block);
    };
    for (const auto& [name, block] : blocks) {
        add(block);
        if (block.whenOff) add(*block.whenOff);
    }
    std::set<const DXFBlock*> drawing(found.begin(), found.end());
    while (!found.empty()) {
        const DXFBlock* const block = found.back();
        found.pop_back();
        for (const DXFBlock* const around : insertedBy[block])
            if (drawing.insert(around).second) found.push_back(around);
    }
    return drawing;
}

void addWalked(Account& account, const DXFTally& tally, const std::set<const DXFBlock*>& drawing)
{
    for (const auto& [type, count] : tally.types) {
        EntityCount& row = account.entity(type);
        row.read += count.read;
        row.drawn += count.drawn;
        for (std::size_t reason = 0; reason < skipReasonCount; ++reason)
            row.skipped[reason] += count.skipped[reason];
    }
    for (const auto& [block, insertions] : tally.insertions)
        for (const auto& [type, records] : insertions.records) {
            EntityCount& row = account.entity(type);
            row.read += records;
            if (insertions.entered && drawing.contains(block)) row.drawn += records;
            else if (block->isOff()) row.skippedFor(SkipReason::layerOff) += records;
            else if (!insertions.entered) row.skippedFor(SkipReason::blockInsertsItself) += records;
            else row.skippedFor(SkipReason::noSurface) += records;
        }
}

void addNeverInserted(Account& account, const DXFTally& tally,
                      const std::function<bool(std::string_view type)>& isDrawn)
{
    for (const auto& [type, count] : tally.types) {
        EntityCount& row = account.entity(type);
        row.read += count.read;
        row.skippedFor(isDrawn(type) ? SkipReason::blockNeverInserted : SkipReason::typeNotDrawn) +=
            count.read;
    }
}

}   // namespace

bool isCountedRecord(std::string_view type) noexcept
{
    return !is(type, "VERTEX") && !is(type, "SEQEND") && !is(type, "ATTRIB") && !is(type, "BLOCK")
           && !is(type, "ENDBLK") && !is(type, "EOF");
}

void DXFTally::inserted(std::string_view type, DXFBlock& block, bool entered)
{
    if (&block != recentBlock || !isSameText(type, recentInserted)) {
        recentInsertions = &insertions[&block];
        recentRecords = &recentInsertions->records[type];
        recentBlock = &block;
        recentInserted = type;
    }
    ++*recentRecords;
    recentInsertions->entered |= entered;
    somethingNotEntered |= !entered;
}

void addTo(Account& account, std::initializer_list<const DXFTally*> entities, const DXFTally& orphans,
           const DXFBlocks& blocks, const std::function<bool(std::string_view type)>& isDrawn)
{
    const std::set<const DXFBlock*> drawing = drawingBlocks(blocks);
    for (const auto& [name, block] : blocks) account.blocks[name] = block.inserts;
    for (const DXFTally* const tally : entities) addWalked(account, *tally, drawing);
    for (const auto& [name, block] : blocks) {
        // What draws something seen from a layer that is off does so from others too.
        const bool onlyOff = !block.tally.walked && block.whenOff && block.whenOff->tally.walked;
        const DXFTally& tally = onlyOff ? block.whenOff->tally : block.tally;
        if (tally.walked) addWalked(account, tally, drawing);
        else addNeverInserted(account, block.tally, isDrawn);
    }
    if (orphans.walked) addWalked(account, orphans, drawing);
    else addNeverInserted(account, orphans, isDrawn);
}

}   // namespace belvor
