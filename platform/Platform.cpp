#include "platform/FileNames.h"
#include "platform/Files.h"
#include "platform/SystemError.h"
#include "platform/Utf16.h"

#include <cerrno>
#include <cstring>
#include <memory>

#ifdef _WIN32
#include "platform/win32/Windows.h"

#include <share.h>
#else
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>
#endif

namespace belvor {

#ifdef _WIN32

std::wstring toWide(std::string_view utf8)
{
    const int length =
        MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()), nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()), wide.data(), length);
    return wide;
}

std::string toUtf8(std::wstring_view wide)
{
    const int length = WideCharToMultiByte(CP_UTF8, 0, wide.data(), static_cast<int>(wide.size()), nullptr, 0,
                                           nullptr, nullptr);
    std::string utf8(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), static_cast<int>(wide.size()), utf8.data(), length, nullptr,
                        nullptr);
    return utf8;
}

std::uint32_t lastSystemError() noexcept { return GetLastError(); }

std::string systemErrorText(std::uint32_t code, std::uint32_t& failure)
{
    wchar_t text[256];
    const DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS
                                            | FORMAT_MESSAGE_MAX_WIDTH_MASK,
                                        nullptr, code, 0, text, 256, nullptr);
    failure = length == 0 ? GetLastError() : 0;
    std::string result = toUtf8(std::wstring_view(text, length));
    while (!result.empty() && result.back() == ' ') result.pop_back();
    return result;
}

std::FILE* openFile(const std::string& path, const char* mode) noexcept
try {
    const bool writes = std::strpbrk(mode, "wa+") != nullptr;
    return _wfsopen(toWide(path).c_str(), toWide(mode).c_str(), writes ? _SH_DENYWR : _SH_DENYNO);
} catch (...) {
    errno = ENOMEM;
    return nullptr;
}

void removeFile(const std::string& path) noexcept
try {
    DeleteFileW(toWide(path).c_str());
} catch (...) {}

bool replaceFile(const std::string& from, const std::string& to) noexcept
try {
    if (MoveFileExW(toWide(from).c_str(), toWide(to).c_str(), MOVEFILE_REPLACE_EXISTING)) return true;
    errno = GetLastError() == ERROR_ACCESS_DENIED    ? EACCES
            : GetLastError() == ERROR_FILE_NOT_FOUND ? ENOENT
                                                     : EIO;
    return false;
} catch (...) {
    errno = ENOMEM;
    return false;
}

bool isFolder(const std::string& path) noexcept
try {
    const DWORD attributes = GetFileAttributesW(toWide(path).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
} catch (...) {
    return false;
}

bool isSameFile(const std::string& a, const std::string& b) noexcept
try {
    const auto whole = [](const std::string& path) {
        std::wstring name(32768, L'\0');
        name.resize(GetFullPathNameW(toWide(path).c_str(), 32768, name.data(), nullptr));
        return name;
    };
    return CompareStringOrdinal(whole(a).c_str(), -1, whole(b).c_str(), -1, TRUE) == CSTR_EQUAL;
} catch (...) {
    return false;
}

bool isSpecialFile(const std::string&) noexcept { return false; }

long long tellFile(std::FILE* file) noexcept { return _ftelli64(file); }
bool seekFile(std::FILE* file, long long offset) noexcept { return _fseeki64(file, offset, SEEK_SET) == 0; }

#else

std::uint32_t lastSystemError() noexcept { return static_cast<std::uint32_t>(errno); }

std::string systemErrorText(std::uint32_t code, std::uint32_t& failure)
{
    failure = 0;
    return std::strerror(static_cast<int>(code));
}

std::FILE* openFile(const std::string& path, const char* mode) noexcept
{
    return std::fopen(path.c_str(), mode);
}
void removeFile(const std::string& path) noexcept { unlink(path.c_str()); }
bool replaceFile(const std::string& from, const std::string& to) noexcept
{
    return std::rename(from.c_str(), to.c_str()) == 0;
}
bool isFolder(const std::string& path) noexcept
{
    struct stat status;
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool isSameFile(const std::string& a, const std::string& b) noexcept
try {
    if (fileName(a) != fileName(b)) return false;
    const auto folder = [](const std::string& path) {
        return path.substr(0, path.size() - fileName(path).size()) + ".";
    };
    struct stat first, second;
    return stat(folder(a).c_str(), &first) == 0 && stat(folder(b).c_str(), &second) == 0
               ? first.st_dev == second.st_dev && first.st_ino == second.st_ino
               : a == b;
} catch (...) {
    return false;
}

bool isSpecialFile(const std::string& path) noexcept
{
    struct stat status;
    return lstat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode);
}

long long tellFile(std::FILE* file) noexcept { return ftello(file); }
bool seekFile(std::FILE* file, long long offset) noexcept { return fseeko(file, offset, SEEK_SET) == 0; }

#endif

bool readWholeFile(const std::string& path, std::string& bytes)
{
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(openFile(path, "rb"), std::fclose);
    if (!file) return false;
    bytes.clear();
    char block[65536];
    while (const std::size_t count = std::fread(block, 1, sizeof block, file.get()))
        bytes.append(block, count);
    return std::ferror(file.get()) == 0;
}

}   // namespace belvor
