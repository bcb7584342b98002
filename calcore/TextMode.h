#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace belvor {

/// The bytes of a file as the standard library of Windows gives them for a file opened as text, on
/// every system: CR LF becomes LF, and the text ends at a Ctrl-Z. The view is into `bytes`, or into
/// `copy` where line ends had to be changed. `pause` is called after each few megabytes and may throw.
template <class Pause>
std::string_view textModeBytes(std::string_view bytes, std::string& copy, Pause pause)
{
    constexpr std::size_t bytesBetweenPauses = std::size_t{1} << 22;
    bytes = bytes.substr(0, bytes.find('\x1A'));
    if (bytes.find('\r') == std::string_view::npos) return bytes;
    copy.clear();
    copy.reserve(bytes.size());
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (bytes[i] != '\r' || i + 1 == bytes.size() || bytes[i + 1] != '\n') copy += bytes[i];
        if (i % bytesBetweenPauses == bytesBetweenPauses - 1) pause();
    }
    return copy;
}

}   // namespace belvor
