#pragma once

#include <bit>
#include <cstdint>
#include <string>
#include <string_view>

namespace belvor {

/// Bytes of a little-endian file, gathered in memory.
class LittleEndian {
public:
    LittleEndian& u8(std::uint8_t value)
    {
        bytes += static_cast<char>(value);
        return *this;
    }
    LittleEndian& u16(std::uint16_t value)
    {
        return u8(static_cast<std::uint8_t>(value)).u8(static_cast<std::uint8_t>(value >> 8));
    }
    LittleEndian& u32(std::uint32_t value)
    {
        return u16(static_cast<std::uint16_t>(value)).u16(static_cast<std::uint16_t>(value >> 16));
    }
    LittleEndian& u64(std::uint64_t value)
    {
        return u32(static_cast<std::uint32_t>(value)).u32(static_cast<std::uint32_t>(value >> 32));
    }
    LittleEndian& f32(float value) { return u32(std::bit_cast<std::uint32_t>(value)); }
    LittleEndian& f64(double value) { return u64(std::bit_cast<std::uint64_t>(value)); }
    LittleEndian& raw(std::string_view value)
    {
        bytes += value;
        return *this;
    }
    /// The text, its NUL, and one more byte where `position` + all of it would be odd.
    LittleEndian& text(const std::string& value, std::uint32_t position)
    {
        bytes += value;
        u8(0);
        if ((position + bytes.size()) % 2 != 0) u8(0);
        return *this;
    }

    const std::string& data() const noexcept { return bytes; }

private:
    std::string bytes;
};

}   // namespace belvor
