#pragma once

#include "calcore/Point.h"
#include "readers/dxf/DXFGroup.h"

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace belvor {

/// A run of groups that starts with code 0 (an entity, a table entry, a section mark) or 9
/// (a header variable). Whoever asks for a group that must be there gets its value or a
/// BadFile with file and line. Codes are those of the file; the first group of a code counts.
class DXFRecord {
public:
    /// `fileName`, for messages, must outlive the record.
    explicit DXFRecord(const std::string& fileName) : file(&fileName), list(512) { clear(); }

    /// Forgets the groups, keeping their room: 512 or more.
    void clear() noexcept;
    /// The first group, to be filled in place and then kept.
    DXFGroup& first() noexcept { return list.front(); }
    /// Makes what first() gave the record's only group.
    void keepFirst() noexcept
    {
        index(list.front().code, 0);
        count = 1;
    }
    /// Appends groups as `fill` fills them in, while it returns true.
    template <class Fill>
    void appendWhile(Fill fill);

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
    bool isExtended() const noexcept { return extended; }

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
    /// Groups code, code + 10 and code + 20, all needed.
    Point<3> point(int code) const
    {
        const double x = real(code), y = real(code + 10);
        return {x, y, real(code + 20)};
    }
    /// The same with `z` for a missing third.
    Point<3> pointOr(int code, double z) const
    {
        const double x = real(code), y = real(code + 10);
        return {x, y, realOr(code + 20, z)};
    }

    /// The value of a real group, finite; throws BadFile "Error reading double item value".
    double realOf(const DXFGroup& group) const
    {
        if (!group.converted) convertReal(group);
        return group.number;
    }
    /// The value of an integer group; throws BadFile "Error reading integer item value".
    std::int32_t integerOf(const DXFGroup& group) const;

    [[noreturn]] void failNeeding(int code) const;

private:
    const DXFGroup& needed(int code) const
    {
        const DXFGroup* const group = find(code);
        if (!group) failNeeding(code);
        return *group;
    }
    void index(std::uint16_t code, std::size_t place) noexcept;
    void convertReal(const DXFGroup& group) const;

    // The place of the first group of each small code; `stamp` tells this record's entries
    // from those of the records before it.
    struct First {
        std::uint32_t stamp = 0, place = 0;
    };

    const std::string* file;
    std::vector<DXFGroup> list;   // of which `count` are in use
    std::size_t count = 0;
    std::array<First, 256> firsts{};
    std::uint32_t stamp = 0;
    bool extended = false;   // has a group 1001
};

template <class Fill>
void DXFRecord::appendWhile(Fill fill)
{
    const auto makeRoom = [this](std::size_t used) {
        if (used == list.size()) list.resize(2 * used);
        return list.data() + used;
    };
    DXFGroup* group = makeRoom(count);
    for (const DXFGroup* end = list.data() + list.size(); fill(*group);) {
        index(group->code, static_cast<std::size_t>(group - list.data()));
        if (++group != end) continue;
        group = makeRoom(list.size());
        end = list.data() + list.size();
    }
    count = static_cast<std::size_t>(group - list.data());
}

inline void DXFRecord::index(std::uint16_t code, std::size_t place) noexcept
{
    if (code < firsts.size()) {
        First& first = firsts[code];
        if (first.stamp == stamp) return;
        first.stamp = stamp;
        first.place = static_cast<std::uint32_t>(place);
    } else if (code == 1001) {
        extended = true;
    }
}

inline const DXFGroup* DXFRecord::find(int code, int n) const noexcept
{
    if (n == 1 && code >= 0 && static_cast<std::size_t>(code) < firsts.size()) {
        const First& first = firsts[static_cast<std::size_t>(code)];
        return first.stamp == stamp ? &list[first.place] : nullptr;
    }
    for (const DXFGroup& group : groups())
        if (group.code == code && --n == 0) return &group;
    return nullptr;
}

}   // namespace belvor
