#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace belvor {

/// Whether the bytes begin as those of a gzip file (RFC 1952) do.
bool isGzip(std::string_view bytes) noexcept;

/// What a gzip file of one or more members holds. `file` is for messages; `pause` is called often, and what
/// it throws passes. Memory is taken only when all is known to be whole and of at most 4 GiB, so that a small
/// file cannot ask for all there is. Throws BadFile, std::bad_alloc.
std::string unpackGzip(std::string_view packed, const std::string& file, const std::function<void()>& pause);

}   // namespace belvor
