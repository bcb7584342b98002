#pragma once

#include <string_view>

namespace belvor {

/// The last part of a path; both slashes separate.
inline std::string_view fileName(std::string_view path) noexcept
{
    const std::size_t separator = path.find_last_of("/\\");
    return separator == path.npos ? path : path.substr(separator + 1);
}

}   // namespace belvor
