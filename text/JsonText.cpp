#include "text/JsonText.h"

#include "text/Utf8.h"

#include <charconv>
#include <cmath>

namespace belvor {
namespace {

void appendUnit(std::string& text, unsigned unit)
{
    text += "\\u";
    for (int shift = 12; shift >= 0; shift -= 4) text += "0123456789abcdef"[unit >> shift & 0xF];
}

/// A character beyond ASCII as one or two numbers of UTF-16.
void appendEscaped(std::string& text, char32_t character)
{
    if (character < 0x10000) return appendUnit(text, character);
    appendUnit(text, 0xD800 + ((character - 0x10000) >> 10));
    appendUnit(text, 0xDC00 + ((character - 0x10000) & 0x3FF));
}

/// The character at `at` of valid UTF-8, which is stepped over.
char32_t nextCharacter(std::string_view text, std::size_t& at)
{
    const auto byte = [&text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned first = byte(at++);
    if (first < 0x80) return first;
    const int more = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : 1;
    char32_t character = first & (0x3Fu >> more);
    for (int i = 0; i < more; ++i) character = character << 6 | (byte(at++) & 0x3F);
    return character;
}

}   // namespace

std::string shortestDecimal(double number)
{
    char digits[32];
    const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    return {digits, end};
}

void JsonText::separate()
{
    if (written.empty()) return;
    const char last = written.back();
    if (last != '{' && last != '[' && last != ':') written += ',';
}

JsonText& JsonText::begin(char mark)
{
    separate();
    written += mark;
    return *this;
}

JsonText& JsonText::end(char mark)
{
    written += mark;
    return *this;
}

JsonText& JsonText::plain(std::string_view token)
{
    separate();
    written += token;
    return *this;
}

JsonText& JsonText::key(std::string_view name)
{
    value(name).written += ':';
    return *this;
}

JsonText& JsonText::value(std::string_view text)
{
    separate();
    const std::string valid = validUtf8(text);
    written += '"';
    for (std::size_t at = 0; at < valid.size();) {
        const std::size_t first = at;
        const char32_t character = nextCharacter(valid, at);
        if (character == '"' || character == '\\') (written += '\\') += static_cast<char>(character);
        else if (character == '\n') written += "\\n";
        else if (character < 0x20 || (character >= 0x7F && letters == Letters::ascii))
            appendEscaped(written, character);
        else written.append(valid, first, at - first);
    }
    written += '"';
    return *this;
}

JsonText& JsonText::value(double number)
{
    return std::isfinite(number) ? plain(shortestDecimal(number)) : null();
}

JsonText& JsonText::numbers(std::span<const double> all)
{
    beginList();
    for (const double number : all) value(number);
    return endList();
}

}   // namespace belvor
