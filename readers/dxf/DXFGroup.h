#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string_view>

namespace belvor {

/// What the value of a group is, fixed by its code.
/// The last three are of binary drawings in the modern reading only.
enum class DXFValueType : std::uint8_t {
    integer16 = 2,
    integer32 = 4,
    real = 8,
    text = 16,
    integer8 = 1,
    integer64 = 64,
    bytes = 128,   ///< After a byte with their number.
};

namespace detail {

constexpr DXFValueType tabulatedType(std::size_t code) noexcept
{
    const auto within = [code](std::size_t first, std::size_t last) { return code >= first && code <= last; };
    if (within(10, 59) || within(140, 147) || within(210, 239) || within(1010, 1059) || within(1210, 1239))
        return DXFValueType::real;
    if (within(60, 79) || within(170, 179) || within(270, 289) || within(1060, 1070))
        return DXFValueType::integer16;
    if (within(90, 99) || code == 1071) return DXFValueType::integer32;
    return DXFValueType::text;
}

constexpr DXFValueType modernType(std::size_t code) noexcept
{
    const auto within = [code](std::size_t first, std::size_t last) { return code >= first && code <= last; };
    if (within(10, 59) || within(110, 149) || within(210, 239) || within(460, 469) || within(1010, 1059))
        return DXFValueType::real;
    if (within(60, 79) || within(170, 179) || within(270, 289) || within(370, 389) || within(400, 409)
        || within(1060, 1070))
        return DXFValueType::integer16;
    if (within(90, 99) || within(420, 429) || within(440, 459) || code == 1071)
        return DXFValueType::integer32;
    if (within(160, 169)) return DXFValueType::integer64;
    if (within(290, 299)) return DXFValueType::integer8;
    if (within(310, 319) || code == 1004) return DXFValueType::bytes;
    return DXFValueType::text;
}

inline constexpr auto modernTypes = [] {
    std::array<DXFValueType, 1240> types{};
    for (std::size_t code = 0; code < types.size(); ++code) types[code] = modernType(code);
    return types;
}();

inline constexpr auto valueTypes = [] {
    std::array<DXFValueType, 1240> types{};
    for (std::size_t code = 0; code < types.size(); ++code) types[code] = tabulatedType(code);
    return types;
}();

}   // namespace detail

constexpr DXFValueType valueTypeOf(std::uint16_t code) noexcept
{
    return code < detail::valueTypes.size() ? detail::valueTypes[code] : DXFValueType::text;
}

/// The same by the widths of today's binary drawings.
constexpr DXFValueType modernValueTypeOf(std::uint16_t code) noexcept
{
    return code < detail::modernTypes.size() ? detail::modernTypes[code] : DXFValueType::text;
}

/// Whether a group of that code is the first of a record.
constexpr bool startsRecord(std::uint16_t code) noexcept { return code == 0 || code == 9; }

/// Whether `text` is that word: compared without a call, since every record's type is asked for several.
template <std::size_t size>
bool is(std::string_view text, const char (&word)[size]) noexcept
{
    return text.size() == size - 1 && std::memcmp(text.data(), word, size - 1) == 0;
}

/// a == b, for views of one file: where it can, a stream gives the same view of it for the same text. Short
/// ones, which most are, are compared without a call.
inline bool isSameText(std::string_view a, std::string_view b) noexcept
{
    if (a.size() != b.size()) return false;
    if (a.data() == b.data()) return true;
    if (a.size() < 4 || a.size() > 8) return a == b;
    const auto four = [](std::string_view text, std::size_t from) {
        std::uint32_t word;
        std::memcpy(&word, text.data() + from, sizeof word);
        return word;
    };
    return four(a, 0) == four(b, 0) && four(a, a.size() - 4) == four(b, b.size() - 4);
}

/// One code and its value. The text is a view into the file's bytes: it lives as long as
/// the stream that the group was read from.
struct DXFGroup {
    std::uint16_t code = 0;
    DXFValueType type = DXFValueType::text;
    std::int32_t line = 0;   ///< Of the code: a line from 1, or a byte offset in a binary file.
    std::string_view text;   ///< The whole value line; a binary text; empty for a binary number.
    mutable double number =
        notConverted;   ///< Not finite: not converted yet, or a bad value of a binary file.

    static constexpr double notConverted = std::numeric_limits<double>::quiet_NaN();
};

}   // namespace belvor
