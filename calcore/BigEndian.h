#pragma once

#include <cstdint>

namespace belvor {

/// The number whose four bytes stand at `bytes`, the most significant one first.
constexpr std::uint32_t readBigEndian(const std::uint8_t* bytes) noexcept
{
    return std::uint32_t{bytes[0]} << 24 | std::uint32_t{bytes[1]} << 16 | std::uint32_t{bytes[2]} << 8
           | std::uint32_t{bytes[3]};
}

/// Puts the four bytes of `value` at `bytes`, the most significant one first.
constexpr void writeBigEndian(std::uint8_t* bytes, std::uint32_t value) noexcept
{
    for (int i = 0; i < 4; ++i) bytes[i] = static_cast<std::uint8_t>(value >> (24 - 8 * i));
}

}   // namespace belvor
