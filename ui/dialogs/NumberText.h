#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace belvor {

// Numbers in dialogs are written and read as the user's country does it: `decimalPoint` is
// its decimal separator, UTF-8. All texts are UTF-8.

/// Four significant digits in general notation, as printf's "%.4G" writes them.
std::string shownNumber(double value, std::string_view decimalPoint);

/// How many characters of a field are looked at.
inline constexpr int longestNumber = 31;
/// The decimal number that `text` begins with, after blanks; 0 when there is none. What
/// follows the number is ignored. One too large for a double is infinite.
double typedNumber(std::string_view text, std::string_view decimalPoint);

/// `format` with its "%lu" and "%.4G" replaced, in order, by `values`.
std::string filled(std::string_view format, std::initializer_list<std::string_view> values);

}   // namespace belvor
