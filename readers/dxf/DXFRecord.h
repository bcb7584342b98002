#pragma once

#include "calcore/Point.h"
#include "platform/LargeMemory.h"
#include "readers/common/Reading.h"
#include "readers/dxf/DXFGroup.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace belvor {

/// A run of groups that starts with code 0 (an entity, a table entry, a section mark) or 9
/// (a header variable). A request for a group that must be there gives its value or throws a
/// BadFile with file and line. Codes are those of the file; the first group of a code counts.
class DXFRecord {
public:
    /// `fileName`, for messages, must outlive the record.
    explicit DXFRecord(const std::string& fileName, ReadingRules rules = ReadingRules::strict)
        : file(&fileName),
          modern(rules == ReadingRules::modern),
          list(512)
    {}

    /// Forgets the groups, keeping their room: 512 or more.
    void clear() noexcept { count = 0; }
    /// The first group, to be filled in place and then kept.
    DXFGroup& first() noexcept { return list.front(); }
    /// Makes what first() gave the record's only group.
    void keepFirst() noexcept;
    /// Appends groups as `fill` fills them in, while it returns true.
    ///
    /// Records come in runs of the same codes, so the groups of the record before are kept behind
    /// the end of this one. Before each group, `refill` gets those kept groups, as first and last. It
    /// may give the first of them new values under their old codes, without looking up the type
    /// of each value, and returns the one after those it has taken. The index of codes stays as it
    /// is for them, which makes binary drawings a fifth faster to read.
    /// `pause` is called after every few thousand groups that are appended, or moved to more room.
    template <class Refill, class Fill, class Pause>
    void appendWhile(Refill refill, Fill fill, Pause pause);

    /// The value of the first group: "LINE", "SECTION", "$ACADVER".
    std::string_view type() const noexcept { return count == 0 ? std::string_view{} : list.front().text; }
    /// Of the first group.
    std::int32_t line() const noexcept { return count == 0 ? 0 : list.front().line; }
    std::span<const DXFGroup> groups() const noexcept { return {list.data(), count}; }
    const std::string& fileName() const noexcept { return *file; }

    bool has(int code) const noexcept { return find(code) != nullptr; }
    /// The n-th group of that code, counted from 1, or null.
    const DXFGroup* find(int code, int n = 1) const noexcept;
    /// The first group of that code after `group`, or null.
    const DXFGroup* next(const DXFGroup& group, int code) const noexcept;
    /// The extended data of an application: from its group 1001 to the next one; else empty.
    std::span<const DXFGroup> extendedData(std::string_view application) const noexcept;
    /// Whether there are extended data at all.
    bool isExtended() const noexcept { return firstOf(1001) != nullptr; }

    std::string_view text(int code) const;
    std::string_view textOr(int code, std::string_view otherwise) const noexcept
    {
        const DXFGroup* const group = find(code);
        return group ? group->text : otherwise;
    }
    double real(int code) const { return realOf(needed(code)); }
    double realOr(int code, double otherwise) const
    {
        const DXFGroup* const group = find(code);
        return group ? realOf(*group) : otherwise;
    }
    std::int32_t integer(int code) const;
    std::int32_t integerOr(int code, std::int32_t otherwise) const;
    /// 0 for a missing group, and for one that is no integer.
    std::int32_t readableInteger(int code) const noexcept;
    /// Groups code, code + 10 and code + 20, all needed.
    Point<3> point(int code) const
    {
        const double x = real(code), y = real(code + 10);
        return {x, y, real(code + 20)};
    }
    /// Whether there is a point: in the modern reading one of which only x is missing counts, so that the
    /// damage is found out.
    bool hasPoint(int code) const noexcept
    {
        return has(code) || (modern && (has(code + 10) || has(code + 20)));
    }
    /// point() with `z` for a missing third.
    Point<3> pointOr(int code, double z) const
    {
        const double x = real(code), y = real(code + 10);
        return {x, y, realOr(code + 20, z)};
    }

    /// The value of a real group, finite; throws BadFile "Error reading double item value".
    double realOf(const DXFGroup& group) const
    {
        if (!std::isfinite(group.number)) convertReal(group);
        return group.number;
    }
    /// The value of an integer group; throws BadFile "Error reading integer item value".
    std::int32_t integerOf(const DXFGroup& group) const;

    [[noreturn]] void failNeeding(int code) const;

    /// Whether the record is read by the modern rules.
    bool isModern() const noexcept { return modern; }

private:
    const DXFGroup& needed(int code) const
    {
        const DXFGroup* const group = find(code);
        if (!group) failNeeding(code);
        return *group;
    }
    void convertReal(const DXFGroup& group) const;

    // Indexed are the small codes and two others.
    static constexpr std::size_t smallCodes = 256, noSlot = smallCodes + 2;
    static constexpr std::size_t slotOf(int code) noexcept
    {
        if (static_cast<unsigned>(code) < smallCodes) return static_cast<std::size_t>(code);
        return code == 1001 ? smallCodes : code == 420 ? smallCodes + 1 : noSlot;
    }
    const DXFGroup* firstOf(int indexedCode) const noexcept
    {
        const std::size_t place = firsts[slotOf(indexedCode)];
        return place < count && list[place].code == indexedCode ? &list[place] : nullptr;
    }
    void index(std::size_t place) noexcept;
    template <class Pause>
    void makeRoom(const Pause& pause);

    static constexpr std::size_t groupsBetweenPauses = 8192;

    const std::string* file;
    bool modern;                  // numbers may have a comma for the point, integers a point
    LargeVector<DXFGroup> list;   // of which `count` are in use; the others are those of earlier records
    std::size_t count = 0;

    // The place of the first group of each indexed code among the first `indexed` of the list:
    // of those codes that there are, another code's entry points at anything.
    std::array<std::uint32_t, noSlot> firsts{};
    std::size_t indexed = 0;
};

// Records come in runs of the same codes: while a group has the code that was at its place
// before, the index stands.
template <class Refill, class Fill, class Pause>
void DXFRecord::appendWhile(Refill refill, Fill fill, Pause pause)
{
    std::size_t stop = std::min(list.size(), count + groupsBetweenPauses);
    for (bool more = true; more; ++count) {
        if (count < indexed)
            count = static_cast<std::size_t>(refill(&list[count], list.data() + indexed) - list.data());
        if (count >= stop) {
            if (count == list.size()) makeRoom(pause);
            if (count >= groupsBetweenPauses) pause();
            stop = std::min(list.size(), count + groupsBetweenPauses);
        }
        const std::uint16_t before = list[count].code;
        more = fill(list[count]);
        if (more && (count >= indexed || list[count].code != before)) index(count);
    }
    --count;
    if (count < indexed) indexed = count;   // `fill` may have changed the next one
}

/// Makes the list longer by at least one group and a few thousand at most. A record can be of hundreds of
/// megabytes: so much is not moved at once, and fresh memory is touched just before it is filled.
template <class Pause>
void DXFRecord::makeRoom(const Pause& pause)
{
    if (list.size() == list.capacity()) {
        LargeVector<DXFGroup> larger;
        larger.reserve(2 * list.size());
        for (std::size_t moved = 0; moved < list.size();) {
            const std::size_t next = std::min(groupsBetweenPauses, list.size() - moved);
            const DXFGroup* const from = list.data() + moved;
            larger.insert(larger.end(), from, from + next);
            moved += next;
            if (moved >= groupsBetweenPauses) pause();
        }
        list.swap(larger);
    }
    list.resize(std::min(list.capacity(), list.size() + groupsBetweenPauses));
}

inline const DXFGroup* DXFRecord::find(int code, int n) const noexcept
{
    if (n == 1 && slotOf(code) != noSlot) return firstOf(code);
    for (const DXFGroup& group : groups())
        if (group.code == code && --n == 0) return &group;
    return nullptr;
}

}   // namespace belvor
