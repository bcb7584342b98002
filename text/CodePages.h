#pragma once

#include <string>
#include <string_view>

namespace belvor {

/// The number for text that is UTF-8 already.
inline constexpr int utf8CodePage = 65001;

/// The code page that a drawing's $DWGCODEPAGE names ("ANSI_1252", in any case, blanks at the ends ignored):
/// 1250 to 1258, 932, 936, 949, 950, UTF-8; 0 for one that is not known.
int codePageNamed(std::string_view name) noexcept;

/// The text in UTF-8. Bytes that are no character of the code page become U+FFFD, as do all from 128 up when
/// the code page is not known (0) and the text is not UTF-8. The tables are the program's own: the same text
/// on every system.
std::string toUtf8(std::string_view bytes, int codePage);

/// The text with each `\U+XXXX` replaced by the character of that hexadecimal number; two that are a
/// surrogate pair are one character. Control characters and single surrogates become U+FFFD.
std::string withoutUnicodeEscapes(std::string_view text);

}   // namespace belvor
