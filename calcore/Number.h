#pragma once

#include <cstdint>
#include <string_view>

namespace belvor {

/// White space of the C locale, whatever the program's locale is.
constexpr bool isBlank(char c) noexcept { return c == ' ' || (c >= '\t' && c <= '\r'); }

constexpr bool isDigit(char c) noexcept { return c >= '0' && c <= '9'; }

/// Reads all of `text` as a decimal real: sign, digits with an optional point, optional
/// exponent with digits. False, with `value` untouched, for anything else: "nan", "inf",
/// hexadecimal, "1D5", overflow. Underflow gives 0. Independent of the locale.
bool isDouble(std::string_view text, double& value) noexcept;

/// Reads all of `text` as an optional sign and decimal digits within 32 bits; else false,
/// with `value` untouched. Independent of the locale.
bool isLong(std::string_view text, std::int32_t& value) noexcept;

}   // namespace belvor
