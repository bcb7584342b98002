#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace belvor {

// Numbers in dialogs are written as the user's country does it: `decimalPoint` is its decimal
// separator, UTF-8. Read are both that and the point. All texts are UTF-8.

/// Four significant digits in general notation, as printf's "%.4G" writes them.
std::string shownNumber(double value, std::string_view decimalPoint);

/// How many characters of a field are looked at.
inline constexpr int longestNumber = 31;
/// The decimal number that `text` begins with, after blanks; 0 when there is none. What
/// follows the number is ignored. One too large for a double is infinite.
double typedNumber(std::string_view text, std::string_view decimalPoint);

/// What a field holds, as far as it is read.
enum class FieldText {
    number,       ///< A number, all of it.
    unfinished,   ///< Nothing, or the beginning of a number.
    other,        ///< Something that is no number, or goes on behind one.
};
FieldText kindOfField(std::string_view text, std::string_view decimalPoint);

/// `format` with its "%lu" and "%.4G" replaced, in order, by `values`.
std::string filled(std::string_view format, std::initializer_list<std::string_view> values);

}   // namespace belvor
