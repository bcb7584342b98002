#include "errors/BadFile.h"
#include "readers/dxf/DXFStream.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>

namespace belvor {
namespace {

constexpr std::string_view sentinel("AutoCAD Binary DXF\r\n\x1a\0", 22);
constexpr unsigned char escape = 255;

template <class Unsigned>
Unsigned littleEndian(const char* from) noexcept
{
    if constexpr (std::endian::native == std::endian::little) {
        Unsigned value;
        std::memcpy(&value, from, sizeof value);
        return value;
    } else {
        Unsigned value = 0;
        for (std::size_t i = sizeof value; i-- > 0;)
            value = static_cast<Unsigned>(static_cast<Unsigned>(value << 8)
                                          | static_cast<unsigned char>(from[i]));
        return value;
    }
}

/// The binary encoding: little-endian codes of one byte (255 announces two more) or of two
/// bytes throughout, then the value in the width of its type, texts up to a zero byte.
template <bool twoByteCodes, bool modern>
class DXFBinaryStream final : public DXFGroupStream<DXFBinaryStream<twoByteCodes, modern>> {
    using Base = DXFGroupStream<DXFBinaryStream>;
    using Base::begin, Base::end;

public:
    explicit DXFBinaryStream(typename Base::Source source)
        : Base(std::move(source)),
          lastWide(begin + std::min<std::ptrdiff_t>(end - begin, largestOffset) - 10)
    {
        go(Base::here, begin + sentinel.size());
    }

    bool isBinary() const noexcept override { return true; }

    bool takeCode(const DXFPosition& position, DXFGroup& group) const
    {
        if (position.at == end) return false;
        group.line = position.line;
        const std::size_t width = codeWidth(position);
        need(width, position.at, position.line);
        group.code = width == 1 ? static_cast<unsigned char>(*position.at)
                                : littleEndian<std::uint16_t>(position.at + width - 2);
        return true;
    }

    /// Takes groups while they have the codes of those from `group` on and are reals, which get
    /// the new values, or short texts that have not changed, which keep the view they have.
    /// Returns the first that is neither.
    DXFGroup* retake(DXFPosition& position, DXFGroup* group, const DXFGroup* last) const noexcept
    {
        if constexpr (!twoByteCodes) return group;
        const char* at = position.at;
        const auto has = [&](DXFValueType type) {
            return littleEndian<std::uint16_t>(at) == group->code && group->type == type;
        };
        const auto isNext = [&](DXFValueType type) { return group != last && at <= lastWide && has(type); };
        for (bool more = true; more;) {
            std::ptrdiff_t most = std::min(last - group, lastWide < at ? 0 : (lastWide - at) / 10 + 1);
            for (; most > 0 && has(DXFValueType::real); --most, ++group, at += 10) {
                group->line = static_cast<std::int32_t>(at - begin);
                group->number = real(at + 2);
            }
            more = isNext(DXFValueType::text) && repeats(group->text, at + 2);
            if (!more) break;
            group->line = static_cast<std::int32_t>(at - begin);
            at += 2 + group->text.size() + 1;
            ++group;
        }
        go(position, at);
        return group;
    }

    void takeValue(DXFPosition& position, DXFGroup& group) const
    {
        const char* const value = position.at + codeWidth(position);
        const DXFValueType type = modern ? modernValueTypeOf(group.code) : valueTypeOf(group.code);
        const auto set = [&group, type](double number, std::string_view text = {}) {
            group = {group.code, type, group.line, text, number};
        };
        switch (type) {
        case DXFValueType::real: set(real(need(8, value, position.line))); return go(position, value + 8);
        case DXFValueType::integer16:
            set(static_cast<std::int16_t>(littleEndian<std::uint16_t>(need(2, value, position.line))));
            return go(position, value + 2);
        case DXFValueType::integer32:
            set(static_cast<std::int32_t>(littleEndian<std::uint32_t>(need(4, value, position.line))));
            return go(position, value + 4);
        case DXFValueType::integer8:
            set(static_cast<signed char>(*need(1, value, position.line)));
            return go(position, value + 1);
        case DXFValueType::integer64:
            set(static_cast<double>(
                static_cast<std::int64_t>(littleEndian<std::uint64_t>(need(8, value, position.line)))));
            return go(position, value + 8);
        case DXFValueType::bytes: {
            const std::size_t length = static_cast<unsigned char>(*need(1, value, position.line));
            set(0.0, {need(length, value + 1, position.line), length});
            return go(position, value + 1 + length);
        }
        case DXFValueType::text: break;
        }
        if (repeats(group.text, value)) {
            set(0.0, group.text);
            return go(position, value + group.text.size() + 1);
        }
        const void* const zero =
            value == end ? nullptr : std::memchr(value, 0, static_cast<std::size_t>(end - value));
        if (!zero) failPastEnd(position.line);
        const char* const textEnd = static_cast<const char*>(zero);
        set(0.0, {value, static_cast<std::size_t>(textEnd - value)});
        go(position, textEnd + 1);
    }

    void passValue(DXFPosition& position, DXFGroup& group) const { takeValue(position, group); }

    // For patterns.
    static constexpr bool lengthsVary = false;
    bool takePlainCode(const DXFPosition& position, DXFGroup& group) const
    {
        return end - position.at >= 3 && takeCode(position, group);
    }
    const char* codeEnd(const DXFPosition& position) const noexcept
    {
        return position.at + codeWidth(position);
    }
    /// The bytes of the value of a real, 16-bit or text group, which it steps over.
    std::string_view valueAt(DXFPosition& position, DXFGroup& group) const
    {
        takeValue(position, group);
        if (group.type == DXFValueType::real) return {position.at - 8, 8};
        return group.type == DXFValueType::integer16 ? std::string_view(position.at - 2, 2) : group.text;
    }
    const char* textEnd(const char* text) const noexcept
    {
        const void* const zero = std::memchr(text, 0, static_cast<std::size_t>(end - text));
        return zero ? static_cast<const char*>(zero) : end;
    }
    static bool takeReal(const char*& at, double& value) noexcept
    {
        value = real(at);
        at += 8;
        return true;
    }
    static bool takeInteger(const char*& at, double& value) noexcept
    {
        value = static_cast<std::int16_t>(littleEndian<std::uint16_t>(at));
        at += 2;
        return true;
    }
    bool endOfRepeat(const char* at, std::int32_t, DXFPosition& position) const noexcept
    {
        go(position, at);
        return true;
    }

private:
    std::size_t codeWidth(const DXFPosition& position) const noexcept
    {
        if constexpr (twoByteCodes) return 2;
        return static_cast<unsigned char>(*position.at) == escape ? 3 : 1;
    }

    /// Whether the text at `value` is that earlier one again; of long texts nothing is said.
    bool repeats(std::string_view text, const char* value) const noexcept
    {
        if (!text.data() || text.size() > 7 || end - value < 8 || end - text.data() < 8) return false;
        const std::size_t others = 7 - text.size();   // of eight bytes, after the text and its zero
        return (littleEndian<std::uint64_t>(text.data()) ^ littleEndian<std::uint64_t>(value)) << (8 * others)
               == 0;
    }

    /// One that is not finite is refused when it is asked for.
    static double real(const char* from) noexcept
    {
        return std::bit_cast<double>(littleEndian<std::uint64_t>(from));
    }

    /// For messages: offsets beyond 31 bits are told as the largest.
    std::int32_t offsetOf(const char* at) const noexcept
    {
        return at - begin > largestOffset ? largestOffset : static_cast<std::int32_t>(at - begin);
    }
    void go(DXFPosition& position, const char* to) const noexcept { position = {to, offsetOf(to)}; }

    /// `from`, if `count` bytes follow there; `line` is that of the group.
    const char* need(std::size_t count, const char* from, std::int32_t line) const
    {
        if (static_cast<std::size_t>(end - from) < count) failPastEnd(line);
        return from;
    }

    [[noreturn]] void failPastEnd(std::int32_t line) const
    {
        throw BadFile(BadFile::pastEnd, Base::fileName(), line);
    }

    static constexpr std::int32_t largestOffset = std::numeric_limits<std::int32_t>::max();
    const char* const lastWide;   // up to here ten bytes follow, and the line is the offset
};

/// How many of the first groups make sense when codes have two bytes, or one.
int groupsThatMakeSense(std::string_view bytes, bool twoBytes) noexcept
{
    constexpr int enough = 200;
    const auto take = [&bytes](std::size_t count) {
        const std::string_view taken = bytes.substr(0, count);
        bytes.remove_prefix(taken.size());
        return taken;
    };
    int groups = 0;
    for (; groups < enough && !bytes.empty(); ++groups) {
        const bool escaped = !twoBytes && static_cast<unsigned char>(bytes.front()) == escape;
        if (escaped) take(1);
        const std::string_view code = take(twoBytes || escaped ? 2 : 1);
        unsigned number = 0;
        for (std::size_t i = code.size(); i-- > 0;)
            number = number * 256 + static_cast<unsigned char>(code[i]);
        if (code.size() < (twoBytes || escaped ? 2u : 1u) || number > 1071) return groups;
        std::size_t width = 0;
        switch (modernValueTypeOf(static_cast<std::uint16_t>(number))) {
        case DXFValueType::integer8: width = 1; break;
        case DXFValueType::integer16: width = 2; break;
        case DXFValueType::integer32: width = 4; break;
        case DXFValueType::real:
        case DXFValueType::integer64: width = 8; break;
        case DXFValueType::bytes:
            width =
                bytes.empty() ? 1 : 1 + static_cast<std::size_t>(static_cast<unsigned char>(bytes.front()));
            break;
        case DXFValueType::text: width = bytes.find('\0') + 1; break;   // 0 when there is none
        }
        if (width == 0 || width > bytes.size()) return groups;
        const std::string_view value = take(width);
        const bool isName = number == 0 || number == 9;   // of a record: an empty one makes no sense
        if (isName && (value.size() < 3 || static_cast<unsigned char>(value.front()) <= ' ')) return groups;
    }
    return groups;
}

bool hasTwoByteCodes(std::string_view groups) noexcept
{
    const int two = groupsThatMakeSense(groups, true), one = groupsThatMakeSense(groups, false);
    return two > one || (two == one && groups.starts_with(std::string_view("\0\0", 2)));
}

}   // namespace

bool DXFStream::isBinaryFile(std::string_view bytes) noexcept
{
    return bytes.substr(0, sentinel.size()) == sentinel;
}

std::unique_ptr<DXFStream> DXFStream::makeBinary(Source source)
{
    const std::string_view groups = source.bytes.substr(sentinel.size());
    if (source.rules == ReadingRules::modern) {
        if (hasTwoByteCodes(groups)) return std::make_unique<DXFBinaryStream<true, true>>(std::move(source));
        return std::make_unique<DXFBinaryStream<false, true>>(std::move(source));
    }
    if (groups.starts_with(std::string_view("\0\0", 2)))
        return std::make_unique<DXFBinaryStream<true, false>>(std::move(source));
    return std::make_unique<DXFBinaryStream<false, false>>(std::move(source));
}

}   // namespace belvor
