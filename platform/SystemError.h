#pragma once

#include <cstdint>
#include <string>

namespace belvor {

/// The calling thread's last system error: GetLastError() on Windows, errno elsewhere.
std::uint32_t lastSystemError() noexcept;

/// The system's description of `code` on one line; empty when it has none, with the code of
/// that failure in `failure`.
std::string systemErrorText(std::uint32_t code, std::uint32_t& failure);

/// Whether `code` says that memory, or room to map files, is exhausted.
bool isOutOfMemory(std::uint32_t code) noexcept;

}   // namespace belvor
