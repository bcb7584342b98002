#include "platform/FileNames.h"
#include "platform/Files.h"
#include "platform/OutputFile.h"
#include "platform/SystemError.h"
#include "platform/Utf16.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

#ifdef _WIN32
#include "platform/win32/Windows.h"

#include <fcntl.h>
#include <io.h>
#include <share.h>
#else
#include <fcntl.h>
#include <poll.h>
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

std::wstring toWidePath(std::string_view utf8)
{
    constexpr std::size_t longestPlain = 200;   // names beside a file's own are longer
    const std::wstring path = toWide(utf8);
    std::wstring whole(32768, L'\0');
    whole.resize(GetFullPathNameW(path.c_str(), 32768, whole.data(), nullptr));
    if (whole.size() <= longestPlain || whole.starts_with(L"\\\\?\\")) return path;
    return whole.starts_with(L"\\\\") ? L"\\\\?\\UNC\\" + whole.substr(2) : L"\\\\?\\" + whole;
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

bool isOutOfMemory(std::uint32_t code) noexcept
{
    return code == ERROR_NOT_ENOUGH_MEMORY || code == ERROR_OUTOFMEMORY || code == ERROR_COMMITMENT_LIMIT
           || code == ERROR_NO_SYSTEM_RESOURCES;
}

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
    return _wfsopen(toWidePath(path).c_str(), toWide(mode).c_str(), writes ? _SH_DENYWR : _SH_DENYNO);
} catch (...) {
    errno = ENOMEM;
    return nullptr;
}

std::string temporaryFolder()
{
    wchar_t folder[MAX_PATH + 2];
    return toUtf8({folder, GetTempPathW(MAX_PATH + 2, folder)});
}

std::FILE* openScratchFile() noexcept
{
    wchar_t folder[MAX_PATH + 1], name[MAX_PATH + 1];
    const DWORD length = GetTempPathW(MAX_PATH + 1, folder);
    if (length == 0 || length > MAX_PATH || GetTempFileNameW(folder, L"blv", 0, name) == 0) {
        errno = EACCES;
        return nullptr;
    }
    std::FILE* const file = _wfopen(name, L"w+bTD");   // short-lived, deleted when closed
    if (!file) DeleteFileW(name);
    return file;
}

void removeFile(const std::string& path) noexcept
try {
    DeleteFileW(toWidePath(path).c_str());
} catch (...) {}

FileKind kindOfFile(const std::string& path, std::uint64_t& size) noexcept
try {
    WIN32_FILE_ATTRIBUTE_DATA found;
    size = 0;
    if (!GetFileAttributesExW(toWidePath(path).c_str(), GetFileExInfoStandard, &found)) {
        errno = GetLastError() == ERROR_ACCESS_DENIED ? EACCES : ENOENT;
        return FileKind::none;
    }
    if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) return FileKind::folder;
    if (found.dwFileAttributes & FILE_ATTRIBUTE_DEVICE) return FileKind::other;
    size = static_cast<std::uint64_t>(found.nFileSizeHigh) << 32 | found.nFileSizeLow;
    return FileKind::regular;
} catch (...) {
    errno = ENOMEM;
    return FileKind::none;
}

static constexpr char separators[] = "/\\";

static bool mayWriteTo(const std::string& path) noexcept
{
    return _waccess(toWidePath(path).c_str(), 2) == 0;
}

static bool makeFolder(const std::string& path)
{
    if (CreateDirectoryW(toWidePath(path).c_str(), nullptr)) return true;
    const DWORD code = GetLastError();
    errno = code == ERROR_ALREADY_EXISTS  ? EEXIST
            : code == ERROR_ACCESS_DENIED ? EACCES
            : code == ERROR_DISK_FULL     ? ENOSPC
                                          : ENOENT;
    return false;
}

static bool readWhile(std::FILE* file, std::size_t most, std::string& bytes,
                      const std::function<bool(const std::string&)>& goOn)
{
    bytes.clear();
    char block[65536];
    for (std::size_t wanted = 64; bytes.size() < most; wanted = sizeof block) {
        const std::size_t count = std::fread(block, 1, std::min(wanted, most - bytes.size()), file);
        if (count == 0) break;
        bytes.append(block, count);
        if (!goOn(bytes)) return true;
    }
    return std::ferror(file) == 0;
}

bool readFileWhile(const std::string& path, std::size_t most, std::string& bytes,
                   const std::function<bool(const std::string&)>& goOn)
{
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(openFile(path, "rb"), std::fclose);
    return file && readWhile(file.get(), most, bytes, goOn);
}

bool readStandardInputWhile(std::string& bytes, const std::function<bool(const std::string&)>& goOn)
{
    _setmode(_fileno(stdin), _O_BINARY);
    return readWhile(stdin, SIZE_MAX, bytes, goOn);
}

long long tellFile(std::FILE* file) noexcept { return _ftelli64(file); }
bool seekFile(std::FILE* file, long long offset) noexcept { return _fseeki64(file, offset, SEEK_SET) == 0; }

#else

std::uint32_t lastSystemError() noexcept { return static_cast<std::uint32_t>(errno); }

bool isOutOfMemory(std::uint32_t code) noexcept { return code == ENOMEM; }

std::string systemErrorText(std::uint32_t code, std::uint32_t& failure)
{
    failure = 0;
    return std::strerror(static_cast<int>(code));
}

std::FILE* openFile(const std::string& path, const char* mode) noexcept
{
    return std::fopen(path.c_str(), mode);
}
std::string temporaryFolder()
{
    for (const char* const name : {"TMPDIR", "TMP", "TEMP", "TEMPDIR"})
        if (const char* const folder = std::getenv(name); folder && *folder != '\0') return folder;
    return "/tmp";
}
std::FILE* openScratchFile() noexcept { return std::tmpfile(); }
void removeFile(const std::string& path) noexcept { unlink(path.c_str()); }
FileKind kindOfFile(const std::string& path, std::uint64_t& size) noexcept
{
    struct stat status;
    size = 0;
    if (stat(path.c_str(), &status) != 0) return FileKind::none;
    if (S_ISDIR(status.st_mode)) return FileKind::folder;
    if (!S_ISREG(status.st_mode)) return FileKind::other;
    size = static_cast<std::uint64_t>(status.st_size);
    return FileKind::regular;
}

static constexpr char separators[] = "/";
static bool mayWriteTo(const std::string& path) noexcept { return access(path.c_str(), W_OK) == 0; }
static bool makeFolder(const std::string& path) { return mkdir(path.c_str(), 0777) == 0; }
// Reading from a pipe that has nothing to give would wait without hearing a Ctrl-C.
static bool readWhile(int number, std::size_t most, std::string& bytes,
                      const std::function<bool(const std::string&)>& goOn)
{
    bytes.clear();
    char block[65536];
    for (std::size_t wanted = 64; bytes.size() < most;) {
        pollfd ready{number, POLLIN, 0};
        const int readyCount = poll(&ready, 1, 50);
        if (readyCount < 0 && errno != EINTR) return false;
        const ssize_t count =
            readyCount > 0 ? read(number, block, std::min(wanted, most - bytes.size())) : -1;
        if (count == 0) return true;
        if (count < 0 && readyCount > 0 && errno != EAGAIN && errno != EINTR) return false;
        if (count > 0) {
            bytes.append(block, static_cast<std::size_t>(count));
            wanted = sizeof block;
        }
        if (!goOn(bytes)) return true;
    }
    return true;
}

bool readFileWhile(const std::string& path, std::size_t most, std::string& bytes,
                   const std::function<bool(const std::string&)>& goOn)
{
    // Opening a pipe nobody writes to would wait as well.
    const int number = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    if (number < 0) return false;
    const struct Closing {
        int descriptor;
        ~Closing() { close(descriptor); }
    } closing{number};
    return readWhile(number, most, bytes, goOn);
}

bool readStandardInputWhile(std::string& bytes, const std::function<bool(const std::string&)>& goOn)
{
    return readWhile(STDIN_FILENO, SIZE_MAX, bytes, goOn);
}

long long tellFile(std::FILE* file) noexcept { return ftello(file); }
bool seekFile(std::FILE* file, long long offset) noexcept { return fseeko(file, offset, SEEK_SET) == 0; }

#endif

bool isSameFile(const std::string& a, const std::string& b) noexcept
try {
    return fileIdentity(a) == fileIdentity(b);
} catch (...) {
    return a == b;
}

bool mayWriteFile(const std::string& path) noexcept
try {
    std::uint64_t size = 0;
    const FileKind kind = kindOfFile(path, size);
    if (kind == FileKind::folder) {
        errno = EISDIR;
        return false;
    }
    if (kind != FileKind::none) return mayWriteTo(path);
    if (errno != ENOENT) return false;
    const std::string folder = path.substr(0, path.size() - fileName(path).size());
    return mayWriteTo(folder.empty() ? "." : folder);
} catch (...) {
    errno = ENOMEM;
    return false;
}

std::string normalPath(std::string_view path)
{
    const bool rooted = !path.empty() && path.find_first_of(separators) == 0;
    std::vector<std::string_view> parts;
    while (!path.empty()) {
        const std::string_view part = path.substr(0, path.find_first_of(separators));
        path.remove_prefix(std::min(part.size() + 1, path.size()));
        const bool mayGo = !parts.empty() && parts.back() != ".." && !parts.back().ends_with(':');
        if (part == ".." && mayGo) parts.pop_back();
        else if (!part.empty() && part != "." && (part != ".." || !rooted)) parts.push_back(part);
    }
    std::string text(rooted ? "/" : "");
    for (const std::string_view part : parts) {
        if (!text.empty() && text.back() != '/') text += '/';
        text += part;
    }
    return text;
}

/// The path without its last part and the separators before that; a root stays whole.
static std::string folderOf(const std::string& path)
{
    const std::size_t last = path.find_last_of(separators);
    if (last == path.npos) return {};
    const std::size_t end = path.find_last_not_of(separators, last);
    return path.substr(0, end == path.npos ? last + 1 : end + 1);
}

bool makeFoldersFor(const std::string& path)
{
    const std::string folder = folderOf(path);
    std::uint64_t size = 0;
    if (folder.empty() || kindOfFile(folder, size) == FileKind::folder) return true;
    if (folder.size() == path.size()) {   // a root that is not there
        errno = ENOENT;
        return false;
    }
    if (!makeFoldersFor(folder)) return false;
    if (makeFolder(folder)) return true;
    const int code = errno;   // another process may have made it meanwhile
    const bool there = kindOfFile(folder, size) == FileKind::folder;
    errno = code == EEXIST ? ENOTDIR : code;
    return there;
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
