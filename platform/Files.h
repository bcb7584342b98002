#pragma once

#include <cstdint>
#include <cstdio>
#include <functional>
#include <string>
#include <string_view>

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

/// A new file for both reading and writing in the folder for temporary files, deleted when it is closed;
/// null with errno set on failure.
std::FILE* openScratchFile() noexcept;

/// The folder for temporary files, UTF-8.
std::string temporaryFolder();

/// The path (UTF-8) in one spelling: without ".", repeated separators and "x/..", its parts separated by "/".
/// Nothing is looked at.
std::string normalPath(std::string_view path);

/// Deletes `path` (UTF-8) if it is there; silent.
void removeFile(const std::string& path) noexcept;

/// Whether both paths (UTF-8) are of one file, however they are spelt and whatever links lead to
/// it. There need be no such file: then their folders and names count.
bool isSameFile(const std::string& a, const std::string& b) noexcept;

/// What has a name.
enum class FileKind { none, regular, folder, other };

/// The kind of what `path` (UTF-8) names, behind links; `other` is a pipe, a device or the like. `size`
/// becomes the size in bytes of a regular file. `none` with errno set when it cannot be looked at.
FileKind kindOfFile(const std::string& path, std::uint64_t& size) noexcept;

/// Whether a file of that name (UTF-8) could be written now, as far as can be told without touching anything:
/// no folder has the name, its own folder is there, and nothing is write-protected. False with errno set.
bool mayWriteFile(const std::string& path) noexcept;

/// Makes the folders that the path (UTF-8) of a file needs. False with errno set.
bool makeFoldersFor(const std::string& path);

/// The whole file as bytes; false when it cannot be opened or read, errno set.
bool readWholeFile(const std::string& path, std::string& bytes);

/// Reads a file of any kind from its start, `most` bytes at most. `goOn` is called after each piece, a first
/// short one and then larger ones, and some twenty times a second while a pipe has nothing to give (not on
/// Windows); when it answers false, the reading ends early. What it throws passes. False when the file cannot
/// be opened or read, errno set.
bool readFileWhile(const std::string& path, std::size_t most, std::string& bytes,
                   const std::function<bool(const std::string& bytesSoFar)>& goOn);

/// The same of what standard input still has, without a limit.
bool readStandardInputWhile(std::string& bytes,
                            const std::function<bool(const std::string& bytesSoFar)>& goOn);

/// The position in `file`, 64 bits wide; −1 on failure, errno set.
long long tellFile(std::FILE* file) noexcept;
/// Moves to the byte `offset`; false on failure, errno set.
bool seekFile(std::FILE* file, long long offset) noexcept;

}   // namespace belvor
