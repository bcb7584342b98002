#include "calcore/Number.h"
#include "calcore/PlainNumber.h"
#include "calcore/Scanner.h"
#include "errors/BadFile.h"
#include "readers/dxf/DXFStream.h"

#include <algorithm>
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

std::string_view withoutBlanks(std::string_view text) noexcept
{
    while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
    return text;
}

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
constexpr char endOfText = '\x1A';   // Ctrl-Z, as old systems write it

/// The text encoding: a line with the code, a line with the value. A line ends with CR, LF,
/// CR LF or LF CR. The modern reading takes blanks off the values, passes over blank lines where a code
/// should be and stops there at a Ctrl-Z. It takes CR CR LF as one line end: programs that put a CR before
/// each LF make that of CR LF.
template <bool modern>
class DXFAsciiStream final : public DXFGroupStream<DXFAsciiStream<modern>> {
    using Base = DXFGroupStream<DXFAsciiStream>;
    using Base::begin, Base::end, Base::fileName, Base::here;

public:
    explicit DXFAsciiStream(typename Base::Source source)
        : Base(std::move(source)),
          codeLineEnd(begin),
          wordStart(begin),
          wordEnd(begin)
    {}

    bool isBinary() const noexcept override { return false; }

    bool takeCode(const DXFPosition& position, DXFGroup& group)
    {
        if (takePlainCode(position, group)) return true;
        if (position.at == end) return false;
        codeLineEnd = position.at;   // not known: the line is looked through again
        if constexpr (modern) return takeUnusualCode(group);
        group.code = parseCode(position);
        return true;
    }

    /// A code that is blanks and digits, alone on its line.
    bool takePlainCode(const DXFPosition& position, DXFGroup& group) noexcept
    {
        group.line = position.line;
        const char* p = position.at;
        while (p != end && *p == ' ') ++p;
        unsigned code = 0;
        const char* const digits = p;
        const char* const limit =
            end - p > 5 ? p + 5 : end;   // fits 16 bits after the cast, whatever the digits
        for (; p != limit && isDigit(*p); ++p) code = code * 10 + static_cast<unsigned>(*p - '0');
        if (p == digits || p == end || !isLineEnd(*p)) return false;
        codeLineEnd = p;
        group.code = static_cast<std::uint16_t>(code);
        return true;
    }

    static DXFGroup* retake(const DXFPosition&, DXFGroup* group, const DXFGroup*) noexcept { return group; }

    void takeValue(DXFPosition& position, DXFGroup& group)
    {
        group.text = takeLine(position, group);
        group.type = valueTypeOf(group.code);
        if constexpr (modern) {   // numbers are taken without blanks anyway
            if (group.type == DXFValueType::text) group.text = withoutBlanks(group.text);
        }
        group.number = DXFGroup::notConverted;
    }

    void passValue(DXFPosition& position, const DXFGroup& group) { takeLine(position, group); }

    // For patterns.
    static constexpr bool lengthsVary = true;   // of numbers
    const char* codeEnd(const DXFPosition&) const noexcept { return codeLineEnd + 1; }
    /// The bytes of the value of a group, which it steps over: of a real its number, of an integer also the
    /// blanks before it, which are fewer before more digits.
    std::string_view valueAt(DXFPosition& position, const DXFGroup& group)
    {
        const std::string_view line = takeLine(position, group);
        const DXFValueType type = valueTypeOf(group.code);
        if (type != DXFValueType::real && type != DXFValueType::integer16) return line;
        const std::size_t first = std::min(line.find_first_not_of(' '), line.size());
        const std::string_view number = line.substr(first, line.find_first_of(" \t", first) - first);
        return type == DXFValueType::real ? number : line.substr(0, first + number.size());
    }
    const char* textEnd(const char* text) const noexcept { return findLineEnd(text, end); }
    bool takeReal(const char*& at, double& value) const noexcept
    {
        if (plain::takeReal(at, value)) return true;
        if (isBlank(*at)) return false;
        Scanner<> scanner(std::string_view(at, static_cast<std::size_t>(end - at)));
        if (!scanner.real(value)) return false;
        at = scanner.position();
        return true;
    }
    /// Looks at no more than plain::longestReal characters.
    static bool takeInteger(const char*& at, double& value) noexcept
    {
        constexpr int mostBlanks = 10;
        const char* p = at;
        for (int i = 0; i < mostBlanks && *p == ' '; ++i) ++p;
        const bool negative = *p == '-';
        p += negative;
        std::uint64_t size;
        const unsigned digits = plain::leadingDigits(p, size);
        if (digits == 0 || isDigit(p[digits])) return false;
        value = negative ? -static_cast<double>(size) : static_cast<double>(size);
        at = p + digits;
        return true;
    }
    bool endOfRepeat(const char* at, std::int32_t groups, DXFPosition& position) const noexcept
    {
        if (here.line > largestLine - 2 * groups) return false;
        position = {at, here.line + 2 * groups};
        return true;
    }

private:
    static constexpr std::int32_t largestLine = std::numeric_limits<std::int32_t>::max();

    /// Lines beyond 31 bits are told as the largest.
    static std::int32_t twoLinesOn(std::int32_t line) noexcept
    {
        return line > largestLine - 2 ? largestLine : line + 2;
    }

    /// The value's line, which ends the group.
    std::string_view takeLine(DXFPosition& position, const DXFGroup& group) const
    {
        const char* textEnd;
        const char* const value = stepOver(codeLineEnd, textEnd);
        if (value == end) throw BadFile(BadFile::badGroupValue, fileName(), group.line);
        position = {stepOver(value, textEnd), twoLinesOn(group.line)};
        return {value, static_cast<std::size_t>(textEnd - value)};
    }

    /// Past the line that starts at `line`; its text ends at `textEnd`.
    const char* stepOver(const char* line, const char*& textEnd) const noexcept
    {
        const char* p = textEnd = findLineEnd(line, end);
        if (p == end) return p;
        const char other = *p == '\n' ? '\r' : '\n';
        ++p;
        if (p == end) return p;
        if constexpr (modern) {
            if (*p == '\r' && other == '\n' && end - p > 1 && p[1] == '\n') return p + 2;
        }
        return *p == other ? p + 1 : p;
    }

    std::uint16_t parseCode(DXFPosition position);
    bool takeUnusualCode(DXFGroup& group);

    const char* codeLineEnd;   // the line end of the code that takeCode() read last

    // The number found last beyond a run of blanks, and where that run starts: blank lines
    // lead to the same number from each of their positions, and are looked through once.
    const char* wordStart;
    const char* wordEnd;
    std::uint16_t wordCode = 0;
};

/// An integer as the C library would read it from there: blanks, line ends among them, a
/// sign, digits; what follows does not matter. Never looks beyond the end of the data.
template <bool modern>
std::uint16_t DXFAsciiStream<modern>::parseCode(DXFPosition position)
{
    if (position.at >= wordStart && position.at < wordEnd) return wordCode;
    const char* p = position.at;
    while (p != end && isBlank(*p)) ++p;
    const char* const word = p;
    const bool negative = p != end && *p == '-';
    if (p != end && (*p == '-' || *p == '+')) ++p;
    const char* const digits = p;
    constexpr std::int64_t most = std::numeric_limits<std::int32_t>::max();
    std::int64_t value = 0;
    for (; p != end && isDigit(*p); ++p) {
        value = value * 10 + (*p - '0');
        if (value > most + (negative ? 1 : 0))
            throw BadFile(BadFile::badGroupCode, fileName(), position.line);
    }
    if (p == digits) throw BadFile(BadFile::badGroupCode, fileName(), position.line);
    wordStart = position.at;
    wordEnd = word + 1;
    wordCode = static_cast<std::uint16_t>(negative ? -value : value);
    return wordCode;
}

/// The code of the line at codeLineEnd, the group's, or of the first below it that is not blank, where the
/// line is more than blanks before the digits; for the modern reading. False at the end of the text. Only
/// blanks may stand around the number, or the position is lost.
template <bool modern>
bool DXFAsciiStream<modern>::takeUnusualCode(DXFGroup& group)
{
    std::string_view line;
    while (codeLineEnd != end) {
        const char* textEnd;
        const char* const next = stepOver(codeLineEnd, textEnd);
        line = withoutBlanks({codeLineEnd, static_cast<std::size_t>(textEnd - codeLineEnd)});
        if (!line.empty()) break;
        codeLineEnd = next;
        if (group.line != largestLine) ++group.line;
    }
    if (line.empty() || line.front() == endOfText) return false;
    std::int32_t code = 0;
    if (!isLong(line, code)) throw BadFile(BadFile::badGroupCode, fileName(), group.line);
    group.code = static_cast<std::uint16_t>(code);
    return true;
}

}   // namespace

std::unique_ptr<DXFStream> DXFStream::makeAscii(Source source)
{
    if (source.rules == ReadingRules::strict)
        return std::make_unique<DXFAsciiStream<false>>(std::move(source));
    if (source.bytes.starts_with(byteOrderMark)) source.bytes.remove_prefix(byteOrderMark.size());
    return std::make_unique<DXFAsciiStream<true>>(std::move(source));
}

}   // namespace belvor
