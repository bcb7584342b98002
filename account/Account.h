#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace belvor {

/// Why an entity gave nothing to draw. Of several reasons that hold for an entity, the first in
/// this order is the one that counts.
enum class SkipReason : std::uint8_t {
    faulty,               ///< Damaged: listed among the repairs too.
    typeNotDrawn,         ///< No entity of its type is drawn.
    paperSpace,           ///< On a sheet, and model space has something to draw.
    invisible,            ///< Its own flag says so.
    blockNeverInserted,   ///< It stands in a block that nothing drawn inserts.
    layerFrozen,
    layerOff,
    blockEmpty,           ///< This and the following: of an INSERT.
    blockInAnotherFile,   ///< An external reference.
    blockUnknown,
    blockInsertsItself,
    noSurface,   ///< A line without thickness, an open curve, an INSERT of nothing that is drawn.
};
inline constexpr std::size_t skipReasonCount = 12;

/// Whether a program may have written it as the type of a record: a damaged file is full of others.
bool isRecordType(std::string_view text) noexcept;

/// The entities of one type. read = drawn + the sum of skipped, always, once the reading is done.
struct EntityCount {
    std::uint64_t read = 0, drawn = 0;
    std::array<std::uint64_t, skipReasonCount> skipped{};   ///< By SkipReason.

    std::uint64_t& skippedFor(SkipReason reason) noexcept
    {
        return skipped[static_cast<std::size_t>(reason)];
    }
    std::uint64_t skippedInAll() const noexcept;
};

/// One thing of the file that was assumed, mended or left out because it was damaged.
struct Repair {
    std::int64_t position;   ///< A line from 1 of a text file, a byte offset of a binary one.
    std::string record;      ///< The type of the record, "POLYLINE", as the file writes it.
    std::string text;        ///< What was done, for the user.
};

/// Things of one kind that were met and not drawn, for one reason; those of a block count at each insertion.
struct NotDrawn {
    std::string type;          ///< As the file writes it; "?" where that is unreadable.
    std::string reason;        ///< For the user, in words, without control characters.
    std::uint64_t count = 0;   ///< At most the largest number that this holds.
    bool canBeDrawn = false;   ///< Once the user thaws a layer, mends a block, asks for the other reading ...
};

/// What a reader met in a file and what became of it: filled by one reader, constant afterwards.
/// Its size depends on the number of types and blocks, never on that of entities or faults.
/// Names and texts are as the file has them, in UTF-8 where the reader could tell.
class Account {
public:
    static constexpr std::size_t maxRepairs = 1000, maxTypes = 1000;

    /// The row of a type, added when it is new. Types that are no words of A to Z, 0 to 9 and _ with two
    /// characters at least, 64 at most, and all beyond the first maxTypes, share the row "?".
    EntityCount& entity(std::string_view type);

    /// Counts one repair and keeps it if it is among the first maxRepairs.
    void repair(std::int64_t position, std::string_view record, std::string text);

    /// Adds a warning, unless it is there already.
    void warn(std::string text);

    std::uint64_t read() const noexcept;      ///< Entities of all types.
    std::uint64_t skipped() const noexcept;   ///< The same of those that were not drawn.

    std::map<std::string, EntityCount, std::less<>> entities;   ///< By type.
    std::uint64_t repairCount = 0;
    std::vector<Repair> repairs;   ///< The first maxRepairs, in the order of the file's reading.
    bool byteOffsets = false;      ///< Whether the positions of repairs are byte offsets.
    /// The blocks by name, and how many INSERT records of the whole drawing, drawn or not, name each.
    std::map<std::string, std::uint64_t, std::less<>> blocks;
    std::vector<std::string> warnings;

    std::vector<NotDrawn> notDrawn;   ///< By type, then by reason; empty for formats where all is drawn.
    int logFailure = 0;               ///< Why the diagnostic log could not be written, by errno; 0: it could.
};

}   // namespace belvor
