#include "readers/dxf/DXFRecord.h"

#include "app/errors/BadFile.h"
#include "calcore/Number.h"
#include "calcore/Scanner.h"

#include <cmath>

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
    Scanner<> scanner(text);   // the quick road for the plain numbers that nearly all are
    if (scanner.real(value) && (scanner.position() == scanner.end() || isBlank(*scanner.position()))) return true;
    return isDouble(firstWord(text), value);
}

}   // namespace

void DXFRecord::clear() noexcept
{
    count = 0;
    extended = false;
    if (++stamp != 0) return;
    firsts.fill({});   // once in 2^32 records
    stamp = 1;
}

const DXFGroup* DXFRecord::next(const DXFGroup& group, int code) const noexcept
{
    for (const DXFGroup* at = &group + 1; at < list.data() + count; ++at)
        if (at->code == code) return at;
    return nullptr;
}

std::span<const DXFGroup> DXFRecord::extendedData(std::string_view application) const noexcept
{
    if (!extended) return {};
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
    // A binary group brings its number; one that is infinite or no number is refused here,
    // as a text group is.
    if (group.text.data() == nullptr) value = group.number;
    else if (!realWord(group.text, value)) throw BadFile(BadFile::badReal, *file, group.line);
    if (!std::isfinite(value)) throw BadFile(BadFile::badReal, *file, group.line);
    group.number = value;
    group.converted = true;
}

std::int32_t DXFRecord::integerOf(const DXFGroup& group) const
{
    if (!group.converted) {
        std::int32_t value = 0;
        if (!isLong(firstWord(group.text), value)) throw BadFile(BadFile::badInteger, *file, group.line);
        group.number = value;
        group.converted = true;
    }
    return static_cast<std::int32_t>(group.number);
}

}   // namespace belvor
