#include "readers/dxf/DXFRecord.h"

#include "calcore/Number.h"
#include "calcore/Scanner.h"
#include "errors/BadFile.h"

#include <cmath>
#include <cstdint>
#include <limits>

namespace belvor {
namespace {

/// The first run of characters that are not blank; what follows it does not count.
std::string_view firstWord(std::string_view text) noexcept
{
    while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
    std::size_t length = 0;
    while (length < text.size() && !isBlank(text[length])) ++length;
    return text.substr(0, length);
}

bool realWord(std::string_view text, double& value) noexcept
{
    Scanner<> scanner(text);   // the fast case, which nearly all numbers are
    if (scanner.real(value) && (scanner.position() == scanner.end() || isBlank(*scanner.position())))
        return true;
    return isDouble(firstWord(text), value);
}

/// A number with a comma for the point.
bool commaWord(std::string_view text, double& value)
{
    constexpr std::size_t longest = 400;   // longer ones are no numbers that a program has written
    std::string word(firstWord(text).substr(0, longest));
    const std::size_t comma = word.find(',');
    if (comma == std::string::npos || word.find('.') != std::string::npos) return false;
    word[comma] = '.';
    return isDouble(word, value);   // another comma is no part of a number
}

/// An integer written as a real.
bool integralWord(std::string_view text, std::int32_t& value)
{
    double real = 0.0;
    if (!realWord(text, real) && !commaWord(text, real)) return false;
    if (!(std::fabs(real) <= std::numeric_limits<std::int32_t>::max()) || real != std::trunc(real))
        return false;
    value = static_cast<std::int32_t>(real);
    return true;
}

/// An integer of 32 bits that is written without its sign, as some programs write true colours.
bool unsignedWord(const DXFGroup& group, std::int32_t& value) noexcept
{
    double real = 0.0;
    if (modernValueTypeOf(group.code) != DXFValueType::integer32 || !realWord(group.text, real)) return false;
    if (!(real >= 0.0 && real <= std::numeric_limits<std::uint32_t>::max()) || real != std::trunc(real))
        return false;
    value = static_cast<std::int32_t>(static_cast<std::uint32_t>(real));
    return true;
}

}   // namespace

void DXFRecord::keepFirst() noexcept
{
    count = 1;
    if (firstOf(list.front().code) != &list.front()) index(0);
}

/// Brings the index up to the group at `place`, whose code was another before. What it says of
/// the groups in front of it holds; those behind it must follow.
void DXFRecord::index(std::size_t place) noexcept
{
    const std::uint16_t code = list[place].code;
    indexed = place + 1;
    if (slotOf(code) == noSlot) return;
    std::uint32_t& first = firsts[slotOf(code)];
    if (first >= place || list[first].code != code) first = static_cast<std::uint32_t>(place);
}

const DXFGroup* DXFRecord::next(const DXFGroup& group, int code) const noexcept
{
    for (const DXFGroup* at = &group + 1; at < list.data() + count; ++at)
        if (at->code == code) return at;
    return nullptr;
}

std::span<const DXFGroup> DXFRecord::extendedData(std::string_view application) const noexcept
{
    if (!isExtended()) return {};
    for (const DXFGroup& group : groups()) {
        if (group.code != 1001 || group.text != application) continue;
        const DXFGroup* const end = next(group, 1001);
        return {&group, end ? end : list.data() + count};
    }
    return {};
}

void DXFRecord::failNeeding(int code) const
{
    throw BadFile(BadFile::groupNeeded, std::to_string(code), *file, line());
}

std::string_view DXFRecord::text(int code) const { return needed(code).text; }

std::int32_t DXFRecord::integer(int code) const { return integerOf(needed(code)); }

std::int32_t DXFRecord::integerOr(int code, std::int32_t otherwise) const
{
    const DXFGroup* const group = find(code);
    return group ? integerOf(*group) : otherwise;
}

void DXFRecord::convertReal(const DXFGroup& group) const
{
    double value = 0.0;
    const bool read = realWord(group.text, value) || (modern && commaWord(group.text, value));
    if (!read || !std::isfinite(value)) throw BadFile(BadFile::badReal, *file, group.line);
    group.number = value;
}

std::int32_t DXFRecord::readableInteger(int code) const noexcept
{
    const DXFGroup* const group = find(code);
    std::int32_t value = 0;
    if (!group) return 0;
    if (std::isfinite(group->number)) return static_cast<std::int32_t>(group->number);
    if (modern && integralWord(group->text, value)) return value;
    return isLong(firstWord(group->text), value) ? value : 0;
}

std::int32_t DXFRecord::integerOf(const DXFGroup& group) const
{
    if (!std::isfinite(group.number)) {
        std::int32_t value = 0;
        if (!isLong(firstWord(group.text), value)
            && !(modern && (integralWord(group.text, value) || unsignedWord(group, value))))
            throw BadFile(BadFile::badInteger, *file, group.line);
        group.number = value;
    }
    return static_cast<std::int32_t>(group.number);
}

}   // namespace belvor
