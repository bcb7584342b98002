#pragma once

#include <string>
#include <string_view>

namespace belvor {

/// The text of that number, UTF-8, for the program's life; an empty text for a number
/// that the table does not have.
const char* textOf(int number) noexcept;

/// The same with the first conversion in it, such as "%s" or "%d", replaced by `argument`.
std::string filledText(int number, std::string_view argument);

}   // namespace belvor
