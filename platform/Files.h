#pragma once

#include <cstdio>
#include <string>

namespace belvor {

/// What ends a line of a text file on this system.
#ifdef _WIN32
inline constexpr const char* textLineEnd = "\r\n";
#else
inline constexpr const char* textLineEnd = "\n";
#endif

/// fopen for a UTF-8 `path`; null with errno set on failure. A file opened for writing is
/// closed to other writers while it is open, where the system offers that.
std::FILE* openFile(const std::string& path, const char* mode) noexcept;

/// Deletes `path` (UTF-8) if it is there; silent.
void removeFile(const std::string& path) noexcept;

/// Whether both paths (UTF-8) are of one file, however they are spelt and whatever links lead to
/// it. There need be no such file: then their folders and names count.
bool isSameFile(const std::string& a, const std::string& b) noexcept;

/// The whole file as bytes; false when it cannot be opened or read, errno set.
bool readWholeFile(const std::string& path, std::string& bytes);

/// The position in `file`, 64 bits wide; −1 on failure, errno set.
long long tellFile(std::FILE* file) noexcept;
/// Moves to the byte `offset`; false on failure, errno set.
bool seekFile(std::FILE* file, long long offset) noexcept;

}   // namespace belvor
