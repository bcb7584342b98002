#ifdef _WIN32

#include "platform/OutputPlace.h"
#include "platform/Utf16.h"
#include "platform/win32/Handles.h"

#include <fcntl.h>
#include <io.h>

#include <cerrno>
#include <memory>
#include <mutex>
#include <set>
#include <utility>

namespace belvor {
namespace {

constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

/// The names of ours beside outputs' names. Console events come on a thread of their own.
struct UnfinishedFiles {
    std::mutex mutex;
    std::set<std::wstring> names;
};

UnfinishedFiles& unfinished()
{
    static UnfinishedFiles files;
    return files;
}

int errnoOf(DWORD code) noexcept
{
    switch (code) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME:
    case ERROR_BAD_NETPATH: return ENOENT;
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_USER_MAPPED_FILE: return EACCES;
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS: return EEXIST;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL: return ENOSPC;
    case ERROR_WRITE_PROTECT: return EROFS;
    case ERROR_NOT_ENOUGH_MEMORY:
    case ERROR_OUTOFMEMORY: return ENOMEM;
    case ERROR_FILENAME_EXCED_RANGE: return ENAMETOOLONG;
    default: return EIO;
    }
}

/// False, with errno from the system's last error.
bool failed() noexcept
{
    errno = errnoOf(GetLastError());
    return false;
}

std::wstring wholePath(const std::wstring& path)
{
    std::wstring whole(32768, L'\0');
    whole.resize(GetFullPathNameW(path.c_str(), 32768, whole.data(), nullptr));
    return whole;
}

KernelHandle openExisting(const std::wstring& path, DWORD access)
{
    return KernelHandle(CreateFileW(path.c_str(), access, shareAll, nullptr, OPEN_EXISTING,
                                    FILE_FLAG_BACKUP_SEMANTICS, nullptr));   // the flag admits folders
}

/// Where a link leads; any other path as it is.
std::wstring resolved(const std::wstring& path)
{
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || !(attributes & FILE_ATTRIBUTE_REPARSE_POINT))
        return wholePath(path);
    const KernelHandle file = openExisting(path, 0);
    std::wstring target(32768, L'\0');
    const DWORD length = file ? GetFinalPathNameByHandleW(file.get(), target.data(), 32768, 0) : 0;
    if (length == 0 || length >= 32768) return wholePath(path);
    target.resize(length);
    return target;
}

std::string numberOf(HANDLE file)
{
    BY_HANDLE_FILE_INFORMATION information;
    if (!GetFileInformationByHandle(file, &information)) return "";
    return std::to_string(information.dwVolumeSerialNumber) + ":" + std::to_string(information.nFileIndexHigh)
           + ":" + std::to_string(information.nFileIndexLow);
}

std::size_t nameStart(const std::wstring& path) { return path.find_last_of(L"\\/") + 1; }

/// Folder and name: names differ by more than the case of their letters.
std::string placeIdentity(const std::wstring& path)
{
    const std::size_t start = nameStart(path);
    std::wstring name = path.substr(start), upper = name;
    if (LCMapStringEx(LOCALE_NAME_INVARIANT, LCMAP_UPPERCASE, name.data(), static_cast<int>(name.size()),
                      upper.data(), static_cast<int>(upper.size()), nullptr, nullptr, 0)
        == 0)
        upper = name;
    const KernelHandle folder = openExisting(path.substr(0, start), 0);
    return (folder ? numberOf(folder.get()) : toUtf8(path.substr(0, start))) + "/" + toUtf8(upper);
}

}   // namespace

struct OutputFile::Place::System {
    std::wstring path;
    std::wstring written, older;   // beside it

    System() = default;
    System(const System&) = delete;
    System& operator=(const System&) = delete;
    ~System();
    std::wstring besideName() const;
    bool look(bool& exists) const noexcept;
};

/// What has the name now: nothing, or a file that may be replaced; else false.
bool OutputFile::Place::System::look(bool& exists) const noexcept
{
    const DWORD attributes = GetFileAttributesW(path.c_str());
    exists = attributes != INVALID_FILE_ATTRIBUTES;
    if (!exists) return true;
    if (attributes & FILE_ATTRIBUTE_DIRECTORY) errno = EISDIR;
    else if (attributes & FILE_ATTRIBUTE_READONLY) errno = EACCES;
    else return true;
    return false;
}

OutputFile::Place::System::~System()
{
    for (const std::wstring& each : {std::cref(written), std::cref(older)}) {
        if (each.empty()) continue;
        DeleteFileW(each.c_str());
        const std::lock_guard guard(unfinished().mutex);
        unfinished().names.erase(each);
    }
}

/// A new name in the path's folder, noted as ours.
std::wstring OutputFile::Place::System::besideName() const
{
    const std::size_t start = nameStart(path);
    std::wstring beside = path.substr(0, start) + toWide(unusedNameFor(toUtf8(path.substr(start))));
    const std::lock_guard guard(unfinished().mutex);
    unfinished().names.insert(beside);
    return beside;
}

OutputFile::Place::Place(const std::string& path) : system(std::make_unique<System>())
{
    system->path = resolved(toWidePath(path));
    if (!system->look(existed)) throw FileError(path, Text::cannotWrite, errno);
    if (existed) {
        // Also refuses a file that the user may not write or that another program has locked.
        const KernelHandle file = openExisting(system->path, GENERIC_WRITE);
        if (!file) throw FileError(path, Text::cannotWrite, errnoOf(GetLastError()));
        special = GetFileType(file.get()) != FILE_TYPE_DISK;
        LARGE_INTEGER size;
        hadContent = !GetFileSizeEx(file.get(), &size) || size.QuadPart > 0;
    }
    if (path.empty() || nameStart(system->path) == system->path.size())
        throw FileError(path, Text::cannotWrite, ENOENT);
    identity = placeIdentity(system->path);
}

OutputFile::Place::Place() : system(std::make_unique<System>()), special(true), existed(true) {}

OutputFile::Place::~Place() = default;

namespace {

/// A stream of bytes on a descriptor, which it owns; null with errno set.
std::FILE* streamOn(int descriptor)
{
    std::FILE* const file = descriptor < 0 ? nullptr : _fdopen(descriptor, "wb");
    if (!file && descriptor >= 0) _close(descriptor);
    return file;
}

std::FILE* openStandardOutput()
{
    const int descriptor = _dup(_fileno(stdout));
    if (descriptor >= 0) _setmode(descriptor, _O_BINARY);
    return streamOn(descriptor);
}

}   // namespace

std::FILE* OutputFile::Place::open()
{
    if (special && system->path.empty()) return openStandardOutput();
    if (!special) {
        system->older = system->besideName();
        system->written = system->besideName();
    }
    const HANDLE handle = CreateFileW((special ? system->path : system->written).c_str(), GENERIC_WRITE,
                                      special ? shareAll : FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                                      special ? OPEN_EXISTING : CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) return failed(), nullptr;
    const int number = _open_osfhandle(reinterpret_cast<intptr_t>(handle), _O_WRONLY | _O_BINARY);
    if (number < 0) CloseHandle(handle);
    return streamOn(number);
}

bool OutputFile::Place::takeName(bool keepOlder) noexcept
{
    if (special) return true;
    System& s = *system;
    if (!s.look(existed)) return false;
    if (!existed) {
        taken = MoveFileExW(s.written.c_str(), s.path.c_str(), MOVEFILE_WRITE_THROUGH);
        return taken || failed();
    }
    // Keeps attributes and access rights of the file that is replaced.
    taken = ReplaceFileW(s.path.c_str(), s.written.c_str(), keepOlder ? s.older.c_str() : nullptr,
                         REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr, nullptr);
    if (taken) return true;
    failed();
    const int code = errno;
    // It may have moved the old file away already.
    if (keepOlder && GetFileAttributesW(s.path.c_str()) == INVALID_FILE_ATTRIBUTES)
        MoveFileExW(s.older.c_str(), s.path.c_str(), MOVEFILE_WRITE_THROUGH);
    errno = code;
    return false;
}

void OutputFile::Place::giveBack() noexcept
{
    if (!taken) return;
    if (!existed) DeleteFileW(system->path.c_str());
    else
        MoveFileExW(system->older.c_str(), system->path.c_str(),
                    MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
    taken = false;
}

void OutputFile::Place::settle() noexcept
{
    if (!special && existed) DeleteFileW(system->older.c_str());
}

bool flushToDisk(std::FILE* file, const std::function<void()>& goOn)
{
    goOn();
    const auto handle = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(file)));
    return GetFileType(handle) != FILE_TYPE_DISK || FlushFileBuffers(handle) || failed();
}

std::string fileIdentity(const std::string& path)
{
    const std::wstring wide = toWidePath(path);
    if (const KernelHandle file = openExisting(wide, 0))
        if (std::string number = numberOf(file.get()); !number.empty()) return number;
    return placeIdentity(wholePath(wide));
}

std::vector<std::string> namesIn(const std::string& folder)
{
    std::vector<std::string> names;
    WIN32_FIND_DATAW entry;
    const HANDLE search = FindFirstFileW(toWidePath(folder + "\\*").c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) return names;
    const std::unique_ptr<void, BOOL(WINAPI*)(HANDLE)> closed(search, FindClose);
    do {
        names.push_back(toUtf8(entry.cFileName));
    } while (FindNextFileW(search, &entry));
    return names;
}

void removeIfAbandoned(const std::string& path) noexcept
try {   // without sharing it opens only where no other process has it open
    const HANDLE handle = CreateFileW(toWidePath(path).c_str(), DELETE, 0, nullptr, OPEN_EXISTING,
                                      FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    if (handle != INVALID_HANDLE_VALUE) CloseHandle(handle);
} catch (...) {}

void removeUnfinishedFiles() noexcept
{
    const std::lock_guard guard(unfinished().mutex);
    for (const std::wstring& each : unfinished().names) DeleteFileW(each.c_str());
}

}   // namespace belvor

#endif
