#include "platform/Files.h"
#include "platform/OutputFile.h"
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
long long tellFile(std::FILE* file) noexcept { return ftello(file); }
bool seekFile(std::FILE* file, long long offset) noexcept { return fseeko(file, offset, SEEK_SET) == 0; }

#endif

bool isSameFile(const std::string& a, const std::string& b) noexcept
try {
    return fileIdentity(a) == fileIdentity(b);
} catch (...) {
    return a == b;
}

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
