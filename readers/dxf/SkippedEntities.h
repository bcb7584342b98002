#pragma once

#include "account/Account.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace belvor {

/// count + more × times, or the largest number that fits: arrays of arrays reach beyond it.
std::uint64_t counted(std::uint64_t count, std::uint64_t more, std::uint64_t times) noexcept;

/// Entities that were met and added no surface, counted by type and reason: what tells a
/// user why something is missing from the picture. Entities of a block count at each
/// insertion.
class SkippedEntities {
public:
    enum class Why : std::uint8_t {
        typeNotDrawn,    ///< Its type never gives surfaces.
        noSurface,       ///< This one gives none: a line without thickness, an open curve.
        layerFrozen,     ///< `what` names the layer.
        layerOff,        ///< `what` names the layer.
        blockUnknown,    ///< An INSERT; `what` names the block.
        blockInItself,   ///< An INSERT; `what` names the block.
        noCells,         ///< An INSERT of no columns or no rows, in the strict reading.
        tooFarOut,       ///< Coordinates beyond what a number can hold.
        unreadable,      ///< Not a type of capitals, digits and _: a damaged file.
        more,            ///< Kinds beyond the first thousand.
        blockEmpty,      ///< An INSERT; `what` names the block.
        blockExternal,   ///< An INSERT of a block without entities that stands for another file.
        faulty,          ///< It is damaged.
        paperSpace,      ///< On a sheet, and model space has something to draw.
        invisible,       ///< Its own flag says so.
        insertOff,       ///< On layer 0 in a block whose INSERT is on a layer that is off.
    };

    using Entry = NotDrawn;

    /// Counts that many entities. The entry, for counting more of its kind, stays where it is.
    Entry& add(std::string_view type, Why why, std::string_view what = {}, std::uint64_t times = 1);

    /// By type, then by reason.
    std::vector<Entry> list() const;

private:
    struct Key {
        std::string type;
        Why why;
        std::string what;
    };
    struct KeyView {
        std::string_view type;
        Why why;
        std::string_view what;
    };
    struct Order {
        using is_transparent = void;
        static KeyView view(const Key& key) noexcept { return {key.type, key.why, key.what}; }
        static KeyView view(const KeyView& key) noexcept { return key; }
        bool operator()(const auto& a, const auto& b) const noexcept { return before(view(a), view(b)); }
        static bool before(const KeyView& a, const KeyView& b) noexcept;
    };
    std::map<Key, Entry, Order> entries;
};

}   // namespace belvor
