#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace belvor {

/// The texts of strings.def by name; the value is the text's number.
enum class Text : int {
    none = 0,   ///< No text.
// NOLINTNEXTLINE(bugprone-macro-parentheses): an enumerator
#define BELVOR_TEXT(number, name, text) name = number,
#include "resources/strings.def"
#undef BELVOR_TEXT
};

/// The text that stands `offset` numbers behind `first`, for texts kept in a row.
constexpr Text textAfter(Text first, int offset) noexcept
{
    return static_cast<Text>(static_cast<int>(first) + offset);
}

/// The text, UTF-8, for the program's life; an empty text for a number that the table does
/// not have.
const char* textOf(Text text) noexcept;

/// The text with its first conversions, such as "%s" or "%d", replaced by `arguments` in
/// order. An argument is never read as a format itself: file names hold percent signs.
std::string filledText(Text text, std::initializer_list<std::string_view> arguments);

/// The same for a text that is not in the table.
std::string filledFormat(std::string_view format, std::initializer_list<std::string_view> arguments);

}   // namespace belvor
