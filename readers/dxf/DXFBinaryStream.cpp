#include "readers/dxf/DXFBinaryStream.h"

#include "app/errors/BadFile.h"

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

}   // namespace

DXFBinaryStream::DXFBinaryStream(Source source) : DXFStream(std::move(source))
{
    at = begin + sentinel.size();
    currentLine = static_cast<std::int32_t>(sentinel.size());
    twoByteCodes = end - at >= 2 && at[0] == 0 && at[1] == 0;
}

bool DXFBinaryStream::recognises(std::string_view bytes) noexcept { return bytes.substr(0, sentinel.size()) == sentinel; }

inline std::size_t DXFBinaryStream::codeWidth() const noexcept
{
    if (twoByteCodes) return 2;
    return static_cast<unsigned char>(*at) == escape ? 3 : 1;
}

/// For messages: offsets beyond 31 bits are told as the largest.
inline std::int32_t DXFBinaryStream::offsetOf(const char* place) const noexcept
{
    constexpr auto most = std::numeric_limits<std::int32_t>::max();
    return place - begin > most ? most : static_cast<std::int32_t>(place - begin);
}

inline const char* DXFBinaryStream::need(const char* from, std::size_t count) const
{
    if (static_cast<std::size_t>(end - from) < count) throw BadFile(BadFile::pastEnd, fileName(), offsetOf(at));
    return from;
}

inline bool DXFBinaryStream::takeCode(DXFGroup& group)
{
    if (at == end) return false;
    group.line = currentLine = offsetOf(at);
    const std::size_t width = codeWidth();
    need(at, width);
    group.code = width == 1 ? static_cast<unsigned char>(*at) : littleEndian<std::uint16_t>(at + width - 2);
    return true;
}

inline void DXFBinaryStream::takeValue(DXFGroup& group)
{
    const char* const value = at + codeWidth();
    group.type = valueTypeOf(group.code);
    group.text = {};
    group.converted = true;
    switch (group.type) {
    case DXFValueType::real:
        group.number = std::bit_cast<double>(littleEndian<std::uint64_t>(need(value, 8)));
        group.converted = std::isfinite(group.number);   // otherwise refused when asked for
        at = value + 8;
        return;
    case DXFValueType::integer16:
        group.number = static_cast<std::int16_t>(littleEndian<std::uint16_t>(need(value, 2)));
        at = value + 2;
        return;
    case DXFValueType::integer32:
        group.number = static_cast<std::int32_t>(littleEndian<std::uint32_t>(need(value, 4)));
        at = value + 4;
        return;
    case DXFValueType::text: break;
    }
    const void* const zero = value == end ? nullptr : std::memchr(value, 0, static_cast<std::size_t>(end - value));
    if (!zero) throw BadFile(BadFile::pastEnd, fileName(), offsetOf(at));
    const char* const textEnd = static_cast<const char*>(zero);
    group.text = {value, static_cast<std::size_t>(textEnd - value)};
    at = textEnd + 1;
}

inline void DXFBinaryStream::passValue(DXFGroup& group) { takeValue(group); }

bool DXFBinaryStream::readGroupCode(DXFGroup& group) { return takeCode(group); }

void DXFBinaryStream::readGroupValue(DXFGroup& group)
{
    takeValue(group);
    currentLine = offsetOf(at);   // the loops below leave it to the code that follows
}

void DXFBinaryStream::skipGroupValue(DXFGroup& group) { readGroupValue(group); }

bool DXFBinaryStream::skipToRecord(DXFGroup& group) { return skipGroups(*this, group); }
void DXFBinaryStream::appendGroups(DXFRecord& groups) { readGroups(*this, groups); }

}   // namespace belvor
