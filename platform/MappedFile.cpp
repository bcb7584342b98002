#include "platform/MappedFile.h"

#include "platform/Utf16.h"
#include "platform/Win32Error.h"

#include <atomic>
#include <mutex>
#include <utility>

#ifdef _WIN32
#include "platform/win32/Handles.h"
#else
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdint>
#endif

namespace belvor {
namespace {

thread_local bool damageSeen = false;

/// A view of a file, for the handler of a fault. The records are never freed, only used again:
/// the handler may be reading them at any time.
struct View {
    std::atomic<const char*> first{nullptr};   // null: the record is free
    std::atomic<std::size_t> size{0};
    std::atomic<bool> replaced{false};   // by zeros, from some byte on
    View* next = nullptr;

    bool holds(const char* address) const noexcept
    {
        const char* const begin = first.load();
        return begin && address >= begin && static_cast<std::size_t>(address - begin) < size.load();
    }
};

std::atomic<View*> allViews{nullptr};
static_assert(std::atomic<View*>::is_always_lock_free && std::atomic<std::size_t>::is_always_lock_free,
              "read by the handler of a signal");

std::mutex& viewsMutex()
{
    static std::mutex mutex;
    return mutex;
}

View* viewAt(const void* address) noexcept
{
    for (View* each = allViews.load(); each; each = each->next)
        if (each->holds(static_cast<const char*>(address))) return each;
    return nullptr;
}

void catchFaults();

View* freeView()
{
    catchFaults();
    const std::lock_guard guard(viewsMutex());
    View* view = allViews.load();
    while (view && view->size.load() != 0) view = view->next;
    if (!view) {
        view = new View;
        view->next = allViews.load();
        allViews.store(view);
    }
    view->size = 1;   // taken
    view->replaced = false;
    return view;
}

void note(View& view, const char* first, std::size_t size) noexcept
{
    view.size = size;
    view.first = first;
}

void release(View& view) noexcept
{
    view.first = nullptr;
    view.size = 0;
}

}   // namespace

bool MappedFile::takeDamage() noexcept { return std::exchange(damageSeen, false); }

#ifdef _WIN32

namespace {

/// Puts zeros where the view was; reading goes on there.
LONG CALLBACK onFault(EXCEPTION_POINTERS* fault)
{
    const EXCEPTION_RECORD& record = *fault->ExceptionRecord;
    const bool read = (record.ExceptionCode == EXCEPTION_IN_PAGE_ERROR
                       || record.ExceptionCode == EXCEPTION_ACCESS_VIOLATION)
                      && record.NumberParameters >= 2 && record.ExceptionInformation[0] == 0;
    View* const view = read ? viewAt(reinterpret_cast<const void*>(record.ExceptionInformation[1])) : nullptr;
    if (!view) return EXCEPTION_CONTINUE_SEARCH;
    static std::atomic<bool> busy{false};   // two threads may meet the same fault
    while (busy.exchange(true)) Sleep(0);
    bool good = view->replaced;
    if (!good) {
        void* const first = const_cast<char*>(view->first.load());
        good = UnmapViewOfFile(first)
               && VirtualAlloc(first, view->size.load(), MEM_RESERVE | MEM_COMMIT, PAGE_READONLY) == first;
        view->replaced = good;
    }
    busy = false;
    return good ? EXCEPTION_CONTINUE_EXECUTION : EXCEPTION_CONTINUE_SEARCH;
}

void catchFaults()
{
    static const PVOID handler = AddVectoredExceptionHandler(1, onFault);
    static_cast<void>(handler);
}

struct State {
    LARGE_INTEGER size{};
    FILETIME written{};
};

bool stateOf(HANDLE file, State& state) noexcept
{
    return GetFileSizeEx(file, &state.size) && GetFileTime(file, nullptr, nullptr, &state.written);
}

}   // namespace

struct MappedFile::System {
    KernelHandle file;
    State state;
    View* view = nullptr;

    ~System()
    {
        if (!view) return;
        void* const first = const_cast<char*>(view->first.load());
        const bool replaced = view->replaced;
        release(*view);
        if (!first) return;
        if (replaced) VirtualFree(first, 0, MEM_RELEASE);
        else UnmapViewOfFile(first);
    }
};

MappedFile::MappedFile(const std::string& path, bool emptyAllowed) : system(std::make_unique<System>())
{
    system->file =
        KernelHandle(CreateFileW(toWidePath(path).c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                 nullptr, OPEN_EXISTING, 0, nullptr));
    const HANDLE file = system->file.get();
    if (!file || !stateOf(file, system->state)) throw Win32Error(path);
    const auto length = static_cast<unsigned long long>(system->state.size.QuadPart);
    if (length > SIZE_MAX) throw Win32Error(path, ERROR_NOT_ENOUGH_MEMORY);
    if (length == 0 && emptyAllowed) return;
    const KernelHandle mapping(CreateFileMappingW(file, nullptr, PAGE_READONLY, 0, 0, nullptr));
    if (!mapping) throw Win32Error(path);
    system->view = freeView();
    first = static_cast<const char*>(MapViewOfFile(mapping.get(), FILE_MAP_READ, 0, 0, 0));
    if (!first) throw Win32Error(path);
    size = static_cast<std::size_t>(length);
    note(*system->view, first, size);
}

bool MappedFile::damaged() const noexcept
{
    State now;
    return (system->view && system->view->replaced) || !stateOf(system->file.get(), now)
           || now.size.QuadPart != system->state.size.QuadPart
           || CompareFileTime(&now.written, &system->state.written) != 0;
}

#else

namespace {

struct sigaction formerAction;

/// Puts zeros where the file's bytes cannot be read, up to the view's end; reading goes on there.
void onFault(int number, siginfo_t* fault, void*)
{
    const int code = errno;
    View* const view = viewAt(fault->si_addr);
    const auto pageSize = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    const std::uintptr_t page = reinterpret_cast<std::uintptr_t>(fault->si_addr) / pageSize * pageSize;
    bool good = false;
    if (view) {
        const auto end = reinterpret_cast<std::uintptr_t>(view->first.load()) + view->size.load();
        good = mmap(reinterpret_cast<void*>(page), end - page, PROT_READ,
                    MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED, -1, 0)
               != MAP_FAILED;
        view->replaced = true;
    }
    if (!good) sigaction(number, &formerAction, nullptr);   // it comes again, to whom it belongs
    errno = code;
}

void catchFaults()
{
    static const bool caught = [] {
        struct sigaction action {};
        action.sa_sigaction = onFault;
        action.sa_flags = SA_SIGINFO;
        return sigaction(SIGBUS, &action, &formerAction) == 0;
    }();
    static_cast<void>(caught);
}

}   // namespace

struct MappedFile::System {
    int file = -1;
    struct stat state {};
    View* view = nullptr;

    ~System()
    {
        if (view) {
            void* const start = const_cast<char*>(view->first.load());
            const std::size_t length = view->size;
            release(*view);
            if (start) munmap(start, length);
        }
        if (file >= 0) close(file);
    }
};

MappedFile::MappedFile(const std::string& path, bool emptyAllowed) : system(std::make_unique<System>())
{
    system->file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);   // never waits for a pipe's writer
    if (system->file < 0) throw Win32Error(path);
    struct stat& status = system->state;
    if (fstat(system->file, &status) != 0) throw Win32Error(path);
    if (!S_ISREG(status.st_mode)) throw Win32Error(path, S_ISDIR(status.st_mode) ? EISDIR : EINVAL);
    size = static_cast<std::size_t>(status.st_size);
    if (size == 0 && emptyAllowed) return;
    if (size == 0) throw Win32Error(path, EINVAL);   // as the mapping itself would say
    system->view = freeView();
    void* const view = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, system->file, 0);
    if (view == MAP_FAILED) throw Win32Error(path);
    first = static_cast<const char*>(view);
    note(*system->view, first, size);
}

bool MappedFile::damaged() const noexcept
{
    struct stat now;
    const struct stat& then = system->state;
    return (system->view && system->view->replaced) || fstat(system->file, &now) != 0
           || now.st_size != then.st_size || now.st_mtim.tv_sec != then.st_mtim.tv_sec
           || now.st_mtim.tv_nsec != then.st_mtim.tv_nsec;
}

#endif

MappedFile::~MappedFile()
{
    if (damaged()) damageSeen = true;
}

}   // namespace belvor
