#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace belvor {

/// Whether textModeBytes() gives these bytes as they are.
inline bool isTextModeSame(std::string_view bytes) noexcept
{
    const auto changes = [](const char* from, std::size_t count) {
        unsigned char found = 0;   // no branches: the compiler compares many characters at once
        for (std::size_t i = 0; i < count; ++i)
            found = static_cast<unsigned char>(found | (from[i] == '\r') | (from[i] == '\x1A'));
        return found != 0;
    };
    constexpr std::size_t atOnce = 256;
    std::size_t at = 0;
    for (; bytes.size() - at >= atOnce; at += atOnce)
        if (changes(bytes.data() + at, atOnce)) return false;
    return !changes(bytes.data() + at, bytes.size() - at);
}

/// The bytes of a file as the standard library of Windows gives them for a file opened as text, on
/// every system: CR LF becomes LF, and the text ends at a Ctrl-Z. The view is into `bytes`, or into
/// `copy` where line ends had to be changed. `pause` is called after each few megabytes and may throw.
template <class Pause>
std::string_view textModeBytes(std::string_view bytes, std::string& copy, Pause pause)
{
    if (isTextModeSame(bytes)) return bytes;
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
