#include "calcore/Number.h"
#include "errors/BadFile.h"
#include "readers/dxf/DXFStream.h"

#include <bit>
#include <cstring>
#include <limits>

namespace belvor {
namespace {

constexpr bool isLineEnd(char c) noexcept { return c == '\n' || c == '\r'; }

/// Non-zero in (at least) the lowest byte of `word` that equals `value`, and in no lower one.
constexpr std::uint64_t bytesEqual(std::uint64_t word, char value) noexcept
{
    constexpr std::uint64_t ones = 0x0101010101010101u, tops = 0x8080808080808080u;
    const std::uint64_t difference = word ^ (ones * static_cast<unsigned char>(value));
    return (difference - ones) & ~difference & tops;
}

/// The first CR or LF in [at, end), or end.
const char* findLineEnd(const char* at, const char* end) noexcept
{
    if constexpr (std::endian::native == std::endian::little) {
        for (; end - at >= 8; at += 8) {
            std::uint64_t word;
            std::memcpy(&word, at, 8);
            if (const std::uint64_t found = bytesEqual(word, '\n') | bytesEqual(word, '\r'))
                return at + std::countr_zero(found) / 8;
        }
    }
    while (at != end && !isLineEnd(*at)) ++at;
    return at;
}

/// The text encoding: a line with the code, a line with the value. A line ends with CR, LF,
/// CR LF or LF CR.
class DXFAsciiStream final : public DXFGroupStream<DXFAsciiStream> {
public:
    explicit DXFAsciiStream(Source source)
        : DXFGroupStream(std::move(source)),
          codeLineEnd(begin),
          wordStart(begin),
          wordEnd(begin)
    {}

    bool takeCode(const DXFPosition& place, DXFGroup& group)
    {
        if (place.at == end) return false;
        group.line = place.line;
        const char* p = place.at;
        while (p != end && *p == ' ') ++p;
        unsigned code = 0;
        const char* const digits = p;
        const char* const limit =
            end - p > 5 ? p + 5 : end;   // fits 16 bits after the cast, whatever the digits
        for (; p != limit && isDigit(*p); ++p) code = code * 10 + static_cast<unsigned>(*p - '0');
        if (p != digits && p != end && isLineEnd(*p)) {
            codeLineEnd = p;
            group.code = static_cast<std::uint16_t>(code);
            return true;
        }
        codeLineEnd = place.at;   // not known: the line is looked through again
        group.code = parseCode(place);
        return true;
    }

    static DXFGroup* retake(const DXFPosition&, DXFGroup* group, const DXFGroup*) noexcept { return group; }

    void takeValue(DXFPosition& place, DXFGroup& group)
    {
        group.text = takeLine(place, group);
        group.type = valueTypeOf(group.code);
        group.number = DXFGroup::notConverted;
    }

    void passValue(DXFPosition& place, const DXFGroup& group) { takeLine(place, group); }

private:
    /// Lines beyond 31 bits are told as the largest.
    static std::int32_t twoLinesOn(std::int32_t line) noexcept
    {
        constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();
        return line > most - 2 ? most : line + 2;
    }

    /// The value's line, which ends the group.
    std::string_view takeLine(DXFPosition& place, const DXFGroup& group) const
    {
        const char* textEnd;
        const char* const value = stepOver(codeLineEnd, textEnd);
        if (value == end) throw BadFile(BadFile::badGroupValue, fileName(), group.line);
        place = {stepOver(value, textEnd), twoLinesOn(place.line)};
        return {value, static_cast<std::size_t>(textEnd - value)};
    }

    /// Past the line that starts at `line`; its text ends at `textEnd`.
    const char* stepOver(const char* line, const char*& textEnd) const noexcept
    {
        const char* p = textEnd = findLineEnd(line, end);
        if (p == end) return p;
        const char other = *p == '\n' ? '\r' : '\n';
        ++p;
        return p != end && *p == other ? p + 1 : p;
    }

    std::uint16_t parseCode(DXFPosition place);

    const char* codeLineEnd;   // the line end of the code that takeCode() read last

    // The number found last beyond a run of blanks, and where that run starts: blank lines
    // lead to the same number from each of their places, and are looked through once.
    const char* wordStart;
    const char* wordEnd;
    std::uint16_t wordCode = 0;
};

/// An integer as the C library would read it from there: blanks, line ends among them, a
/// sign, digits; what follows does not matter. Never looks beyond the end of the data.
std::uint16_t DXFAsciiStream::parseCode(DXFPosition place)
{
    if (place.at >= wordStart && place.at < wordEnd) return wordCode;
    const char* p = place.at;
    while (p != end && isBlank(*p)) ++p;
    const char* const word = p;
    const bool negative = p != end && *p == '-';
    if (p != end && (*p == '-' || *p == '+')) ++p;
    const char* const digits = p;
    constexpr std::int64_t most = std::numeric_limits<std::int32_t>::max();
    std::int64_t value = 0;
    for (; p != end && isDigit(*p); ++p) {
        value = value * 10 + (*p - '0');
        if (value > most + (negative ? 1 : 0)) throw BadFile(BadFile::badGroupCode, fileName(), place.line);
    }
    if (p == digits) throw BadFile(BadFile::badGroupCode, fileName(), place.line);
    wordStart = place.at;
    wordEnd = word + 1;
    wordCode = static_cast<std::uint16_t>(negative ? -value : value);
    return wordCode;
}

}   // namespace

std::unique_ptr<DXFStream> DXFStream::makeAscii(Source source)
{
    return std::make_unique<DXFAsciiStream>(std::move(source));
}

}   // namespace belvor
