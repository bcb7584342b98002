#include "readers/dxf/SkippedEntities.h"

#include "resources/Texts.h"

#include <algorithm>
#include <limits>
#include <tuple>

namespace belvor {
namespace {

constexpr std::size_t mostKinds = 1000;   // a file may be made of nothing but new words

bool isControl(char c) noexcept { return static_cast<unsigned char>(c) < ' ' || c == '\x7f'; }

std::string reasonFor(SkippedEntities::Why why, std::string_view what)
{
    std::string reason = textOf(textAfter(Text::typeNotDrawn, static_cast<int>(why)));
    std::string_view start = what.substr(0, 100);
    if (start.size() < what.size())   // not within a character of UTF-8
        while (!start.empty() && (what[start.size()] & '\xc0') == '\x80') start.remove_suffix(1);
    std::string printable(start);
    for (char& c : printable)
        if (isControl(c)) c = '?';
    if (const std::size_t hole = reason.find("%s"); hole != std::string::npos)
        reason.replace(hole, 2, printable);
    return reason;
}

}   // namespace

std::uint64_t counted(std::uint64_t count, std::uint64_t more, std::uint64_t times) noexcept
{
    constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max();
    const std::uint64_t all = times != 0 && more > most / times ? most : more * times;
    return all > most - count ? most : count + all;
}

bool SkippedEntities::Order::before(const KeyView& a, const KeyView& b) noexcept
{
    return std::tie(a.type, a.why, a.what) < std::tie(b.type, b.why, b.what);
}

SkippedEntities::Entry& SkippedEntities::add(std::string_view type, Why why, std::string_view what,
                                             std::uint64_t times)
{
    const bool ofFile = why != Why::unreadable && why != Why::more && why != Why::tooFarOut;
    if (ofFile && !isRecordType(type)) return add("?", Why::unreadable, {}, times);
    const KeyView key{type, why, what};
    auto place = entries.lower_bound(key);
    if (place == entries.end() || Order::before(key, Order::view(place->first))) {
        if (entries.size() >= mostKinds && why != Why::more) return add("?", Why::more, {}, times);
        place = entries.emplace_hint(place, Key{std::string(type), why, std::string(what)},
                                     Entry{std::string(type), reasonFor(why, what), 0});
    }
    place->second.count = counted(place->second.count, 1, times);
    return place->second;
}

std::vector<SkippedEntities::Entry> SkippedEntities::list() const
{
    std::vector<Entry> result;
    result.reserve(entries.size());
    for (const auto& [key, entry] : entries) result.push_back(entry);
    return result;
}

}   // namespace belvor
