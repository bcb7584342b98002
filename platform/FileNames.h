#pragma once

#include <string_view>

namespace belvor {

/// The last part of a path; both slashes separate.
inline std::string_view fileName(std::string_view path) noexcept
{
    const std::size_t separator = path.find_last_of("/\\");
    return separator == path.npos ? path : path.substr(separator + 1);
}

/// Whether the last part of a path ends in a dot and `extension`, which is in lower case, in any case.
inline bool hasExtension(std::string_view path, std::string_view extension) noexcept
{
    const std::string_view name = fileName(path);
    if (name.size() <= extension.size() || name[name.size() - extension.size() - 1] != '.') return false;
    const std::string_view end = name.substr(name.size() - extension.size());
    for (std::size_t i = 0; i < extension.size(); ++i) {
        const char c = end[i] >= 'A' && end[i] <= 'Z' ? static_cast<char>(end[i] | 0x20) : end[i];
        if (c != extension[i]) return false;
    }
    return true;
}

/// The last part of a path without the last dot and what follows it. A name that begins with its only dot
/// stays whole.
inline std::string_view nameWithoutEnding(std::string_view path) noexcept
{
    const std::string_view name = fileName(path);
    const std::size_t dot = name.rfind('.');
    return dot == name.npos || dot == 0 ? name : name.substr(0, dot);
}

}   // namespace belvor
