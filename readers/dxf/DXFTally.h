#pragma once

#include "account/Account.h"
#include "readers/dxf/DXFGroup.h"
#include "readers/dxf/DXFNames.h"

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <map>
#include <string>
#include <string_view>

namespace belvor {

struct DXFBlock;

/// Whether a record among the entities is counted: not those that belong to the record before them, and no
/// end mark.
bool isCountedRecord(std::string_view type) noexcept;

/// What became of the records of one block, or of the ENTITIES section, by type; of INSERTs by the block
/// that they name, because what they draw is known only at the end. The names are views of the file.
class DXFTally {
public:
    struct Insertions {
        std::map<std::string_view, std::uint64_t> records;   ///< By type: INSERTs, dimensions, tables.
        bool entered = false;   ///< One of them has been followed, so the block was not around itself.
    };

    /// Forgets everything, for a new walk.
    void start()
    {
        *this = DXFTally();
        walked = true;
    }

    /// Counts a record that was met and no more is known of.
    void met(std::string_view type) { ++row(type).read; }
    void drawn(std::string_view type, std::uint64_t times = 1)
    {
        EntityCount& count = row(type);
        count.read += times;
        count.drawn += times;
    }
    /// One of those that were counted as drawn is not.
    void undrawn(std::string_view type)
    {
        EntityCount& count = row(type);
        if (count.drawn == 0) return;
        --count.drawn;
        ++count.skippedFor(SkipReason::noSurface);
    }
    void skipped(std::string_view type, SkipReason reason)
    {
        EntityCount& count = row(type);
        ++count.read;
        ++count.skippedFor(reason);
    }
    /// An INSERT or its like of a known block that is not empty; `entered`: it was followed.
    void inserted(std::string_view type, DXFBlock& block, bool entered);
    /// Later walks and arrays may follow an INSERT that the first walk could not.
    void entered(DXFBlock& block)
    {
        if (somethingNotEntered) insertions[&block].entered = true;
    }

    bool walked = false;   ///< Else `types` only says how many records of each there are.
    std::map<std::string_view, EntityCount, std::less<>> types;
    std::map<DXFBlock*, Insertions> insertions;

private:
    EntityCount& row(std::string_view type)
    {
        if (!recent || !isSameText(recentType, type)) {
            recent = &types[type];
            recentType = type;
        }
        return *recent;
    }

    bool somethingNotEntered = false;
    EntityCount* recent = nullptr;   // drawings come in runs of one type
    std::string_view recentType;
    const DXFBlock* recentBlock = nullptr;   // and of INSERTs of one block
    Insertions* recentInsertions = nullptr;
    std::string_view recentInserted;
    std::uint64_t* recentRecords = nullptr;
};

/// Adds to the account of a whole drawing what stands in the tallies of its ENTITIES sections, of the records
/// in BLOCKS sections that stand in no block, and of its blocks. `isDrawn` tells which types can be drawn.
void addTo(Account& account, std::initializer_list<const DXFTally*> entities, const DXFTally& orphans,
           const DXFBlocks& blocks, const std::function<bool(std::string_view type)>& isDrawn);

}   // namespace belvor
