#include "text/Utf8.h"

#include <cstddef>

namespace belvor {
namespace {

unsigned byteAt(std::string_view bytes, std::size_t i) noexcept
{
    return static_cast<unsigned char>(bytes[i]);
}

/// The bytes of the character that starts at `i`, or 0 when none does.
std::size_t characterLength(std::string_view bytes, std::size_t i) noexcept
{
    const unsigned first = byteAt(bytes, i);
    if (first < 0x80) return 1;
    const std::size_t length = first >= 0xC2 && first < 0xE0 ? 2 : (first & 0xF0) == 0xE0 ? 3 : 4;
    if (first < 0xC2 || first > 0xF4 || bytes.size() - i < length) return 0;
    for (std::size_t k = 1; k < length; ++k)
        if ((byteAt(bytes, i + k) & 0xC0) != 0x80) return 0;
    const unsigned second = byteAt(bytes, i + 1);
    const bool tooLong = (first == 0xE0 && second < 0xA0) || (first == 0xF0 && second < 0x90);
    const bool surrogate = first == 0xED && second >= 0xA0;
    const bool beyond = first == 0xF4 && second >= 0x90;
    return tooLong || surrogate || beyond ? 0 : length;
}

}   // namespace

bool isUtf8(std::string_view bytes) noexcept
{
    for (std::size_t i = 0; i < bytes.size();) {
        const std::size_t length = characterLength(bytes, i);
        if (length == 0) return false;
        i += length;
    }
    return true;
}

std::string validUtf8(std::string_view bytes)
{
    std::string text;
    text.reserve(bytes.size());
    for (std::size_t i = 0; i < bytes.size();) {
        const std::size_t length = characterLength(bytes, i);
        if (length == 0) appendUtf8(text, replacementCharacter);
        else text.append(bytes, i, length);
        i += length == 0 ? 1 : length;
    }
    return text;
}

void appendUtf8(std::string& text, char32_t character)
{
    if (character > 0x10FFFF || (character >= 0xD800 && character < 0xE000)) character = replacementCharacter;
    const auto add = [&text](char32_t byte) { text += static_cast<char>(static_cast<unsigned char>(byte)); };
    if (character < 0x80) return add(character);
    if (character < 0x800) {
        add(0xC0 | (character >> 6));
    } else {
        if (character < 0x10000) {
            add(0xE0 | (character >> 12));
        } else {
            add(0xF0 | (character >> 18));
            add(0x80 | ((character >> 12) & 0x3F));
        }
        add(0x80 | ((character >> 6) & 0x3F));
    }
    add(0x80 | (character & 0x3F));
}

}   // namespace belvor
