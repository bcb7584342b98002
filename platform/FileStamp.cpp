#include "platform/FileStamp.h"

#ifdef _WIN32
#include "platform/Utf16.h"
#include "platform/win32/Windows.h"
#else
#include <sys/stat.h>
#endif

namespace belvor {

#ifdef _WIN32

FileStamp stampOf(const std::string& path) noexcept
try {
    WIN32_FILE_ATTRIBUTE_DATA found;
    if (!GetFileAttributesExW(toWidePath(path).c_str(), GetFileExInfoStandard, &found)) return {};
    const FILETIME& time = found.ftLastWriteTime;
    return {true, static_cast<std::uint64_t>(found.nFileSizeHigh) << 32 | found.nFileSizeLow,
            static_cast<std::int64_t>(static_cast<std::uint64_t>(time.dwHighDateTime) << 32
                                      | time.dwLowDateTime)};
} catch (...) {
    return {};
}

#else

FileStamp stampOf(const std::string& path) noexcept
{
    struct stat status;
    if (stat(path.c_str(), &status) != 0) return {};
    constexpr std::int64_t second = 1'000'000'000;
    return {true, static_cast<std::uint64_t>(status.st_size),
            std::int64_t{status.st_mtim.tv_sec} * second + status.st_mtim.tv_nsec};
}

#endif

}   // namespace belvor
