#include "app/errors/BadFile.h"
#include "readers/dxf/DXFStream.h"

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
            value = static_cast<Unsigned>(static_cast<Unsigned>(value << 8) | static_cast<unsigned char>(from[i]));
        return value;
    }
}

/// The binary encoding: little-endian codes of one byte (255 announces two more) or of two
/// bytes throughout, then the value in the width of its type, texts up to a zero byte.
template <bool twoByteCodes>
class DXFBinaryStream final : public DXFGroupStream<DXFBinaryStream<twoByteCodes>> {
    using Base = DXFGroupStream<DXFBinaryStream>;
    using Base::begin, Base::end;

public:
    explicit DXFBinaryStream(typename Base::Source source) : Base(std::move(source)) { go(Base::here, begin + sentinel.size()); }

    bool takeCode(const DXFPosition& place, DXFGroup& group) const
    {
        if (place.at == end) return false;
        group.line = place.line;
        const std::size_t width = codeWidth(place);
        need(width, place.at, place.line);
        group.code = width == 1 ? static_cast<unsigned char>(*place.at) : littleEndian<std::uint16_t>(place.at + width - 2);
        return true;
    }

    /// A group with a real value that does not reach the end of the data: one look at what is left does for all of it.
    bool takeNumber(DXFPosition& place, DXFGroup& group) const noexcept
    {
        if (!twoByteCodes || end - place.at < 10) return false;
        const auto code = littleEndian<std::uint16_t>(place.at);
        if (valueTypeOf(code) != DXFValueType::real) return false;
        setReal(group, code, place.line, littleEndian<std::uint64_t>(place.at + 2));
        go(place, place.at + 10);
        return true;
    }

    void takeValue(DXFPosition& place, DXFGroup& group) const
    {
        const char* const value = place.at + codeWidth(place);
        const DXFValueType type = valueTypeOf(group.code);
        const auto setNumber = [&group, type](double number) { group = {group.code, type, true, group.line, {}, number}; };
        switch (type) {
        case DXFValueType::real:
            setReal(group, group.code, group.line, littleEndian<std::uint64_t>(need(8, value, place.line)));
            return go(place, value + 8);
        case DXFValueType::integer16:
            setNumber(static_cast<std::int16_t>(littleEndian<std::uint16_t>(need(2, value, place.line))));
            return go(place, value + 2);
        case DXFValueType::integer32:
            setNumber(static_cast<std::int32_t>(littleEndian<std::uint32_t>(need(4, value, place.line))));
            return go(place, value + 4);
        case DXFValueType::text: break;
        }
        const void* const zero = value == end ? nullptr : std::memchr(value, 0, static_cast<std::size_t>(end - value));
        if (!zero) failPastEnd(place.line);
        const char* const textEnd = static_cast<const char*>(zero);
        group = {group.code, type, true, group.line, {value, static_cast<std::size_t>(textEnd - value)}, 0.0};
        go(place, textEnd + 1);
    }

    void passValue(DXFPosition& place, DXFGroup& group) const { takeValue(place, group); }

private:
    std::size_t codeWidth(const DXFPosition& place) const noexcept
    {
        if constexpr (twoByteCodes) return 2;
        return static_cast<unsigned char>(*place.at) == escape ? 3 : 1;
    }

    /// A number that is not finite is refused when it is asked for.
    static void setReal(DXFGroup& group, std::uint16_t code, std::int32_t line, std::uint64_t bits) noexcept
    {
        constexpr std::uint64_t exponent = 0x7ff0000000000000;
        group = {code, DXFValueType::real, (bits & exponent) != exponent, line, {}, std::bit_cast<double>(bits)};
    }

    /// For messages: offsets beyond 31 bits are told as the largest.
    void go(DXFPosition& place, const char* to) const noexcept
    {
        constexpr auto most = std::numeric_limits<std::int32_t>::max();
        place = {to, to - begin > most ? most : static_cast<std::int32_t>(to - begin)};
    }

    /// `from`, if `count` bytes follow there; `line` is that of the group.
    const char* need(std::size_t count, const char* from, std::int32_t line) const
    {
        if (static_cast<std::size_t>(end - from) < count) failPastEnd(line);
        return from;
    }

    [[noreturn]] void failPastEnd(std::int32_t line) const { throw BadFile(BadFile::pastEnd, Base::fileName(), line); }
};

}   // namespace

bool DXFStream::isBinary(std::string_view bytes) noexcept { return bytes.substr(0, sentinel.size()) == sentinel; }
std::unique_ptr<DXFStream> DXFStream::makeBinary(Source source)
{
    const std::string_view groups = source.bytes.substr(sentinel.size());
    if (groups.starts_with(std::string_view("\0\0", 2))) return std::make_unique<DXFBinaryStream<true>>(std::move(source));
    return std::make_unique<DXFBinaryStream<false>>(std::move(source));
}

}   // namespace belvor
