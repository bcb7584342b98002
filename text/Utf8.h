#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace belvor {

/// What stands for bytes that are no text: U+FFFD.
inline constexpr char32_t replacementCharacter = 0xFFFD;

/// Whether all of it is UTF-8: shortest forms, no surrogates, at most U+10FFFF.
bool isUtf8(std::string_view bytes) noexcept;

/// The bytes with U+FFFD for each that belongs to no character of UTF-8. Text that is UTF-8 comes back
/// unchanged.
std::string validUtf8(std::string_view bytes);

/// Appends a character; a surrogate or a number beyond U+10FFFF becomes U+FFFD.
void appendUtf8(std::string& text, char32_t character);

}   // namespace belvor
