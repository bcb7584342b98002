#pragma once

#include <string>
#include <string_view>

namespace belvor::test {

/// The text with its line ends, one line feed each, replaced.
inline std::string endingLines(std::string_view text, std::string_view with)
{
    std::string result;
    for (const char c : text) c == '\n' ? result.append(with) : result.append(1, c);
    return result;
}

}   // namespace belvor::test
