#include "platform/MappedFile.h"

#include "platform/Utf16.h"
#include "platform/Win32Error.h"

#ifdef _WIN32
#include "platform/win32/Windows.h"
#else
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#endif

namespace belvor {

#ifdef _WIN32

namespace {

/// Closes a kernel object; the view of a file outlives the handles it was made from.
struct KernelHandle {
    HANDLE handle;
    ~KernelHandle()
    {
        if (handle && handle != INVALID_HANDLE_VALUE) CloseHandle(handle);
    }
};

}   // namespace

MappedFile::MappedFile(const std::string& path, bool emptyAllowed)
{
    const KernelHandle file{
        CreateFileW(toWide(path).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr)};
    if (file.handle == INVALID_HANDLE_VALUE) throw Win32Error(path);
    LARGE_INTEGER length;
    if (!GetFileSizeEx(file.handle, &length)) throw Win32Error(path);
    if (static_cast<unsigned long long>(length.QuadPart) > SIZE_MAX)
        throw Win32Error(path, ERROR_NOT_ENOUGH_MEMORY);
    if (length.QuadPart == 0 && emptyAllowed) return;
    const KernelHandle mapping{CreateFileMappingW(file.handle, nullptr, PAGE_READONLY, 0, 0, nullptr)};
    if (!mapping.handle) throw Win32Error(path);
    first = static_cast<const char*>(MapViewOfFile(mapping.handle, FILE_MAP_READ, 0, 0, 0));
    if (!first) throw Win32Error(path);
    size = static_cast<std::size_t>(length.QuadPart);
}

MappedFile::~MappedFile()
{
    if (first) UnmapViewOfFile(first);
}

#else

namespace {

struct Descriptor {
    int number;
    ~Descriptor()
    {
        if (number >= 0) close(number);
    }
};

}   // namespace

MappedFile::MappedFile(const std::string& path, bool emptyAllowed)
{
    // Not blocking: opening a pipe that nobody writes to would wait for ever.
    const Descriptor file{open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)};
    if (file.number < 0) throw Win32Error(path);
    struct stat status {};
    if (fstat(file.number, &status) != 0) throw Win32Error(path);
    if (!S_ISREG(status.st_mode)) throw Win32Error(path, S_ISDIR(status.st_mode) ? EISDIR : EINVAL);
    size = static_cast<std::size_t>(status.st_size);
    if (size == 0 && emptyAllowed) return;
    if (size == 0) throw Win32Error(path, EINVAL);   // as the mapping itself would say
    void* const view = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file.number, 0);
    if (view == MAP_FAILED) throw Win32Error(path);
    first = static_cast<const char*>(view);
}

MappedFile::~MappedFile()
{
    if (first) munmap(const_cast<char*>(first), size);
}

#endif

}   // namespace belvor
