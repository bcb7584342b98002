#pragma once

#include <string>
#include <string_view>

namespace belvor {

/// UTF-8 to UTF-16 (`wchar_t` units on Windows); a byte that is no UTF-8 becomes U+FFFD.
std::wstring toWide(std::string_view utf8);
/// The same of a path, for calls of the system: in the form that may have more than 260 characters where the
/// path, or that of a file beside it, needs it.
std::wstring toWidePath(std::string_view utf8);
/// UTF-16 to UTF-8; a lone surrogate becomes U+FFFD.
std::string toUtf8(std::wstring_view wide);

}   // namespace belvor
