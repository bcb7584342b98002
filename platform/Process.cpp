#include "platform/Process.h"

#include "platform/ControlGroups.h"
#include "platform/FileNames.h"
#include "platform/OutputPlace.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <new>

#ifdef _WIN32
#include "platform/Utf16.h"
#include "platform/win32/Windows.h"

#include <io.h>
#include <shellapi.h>
#else
#include <sys/resource.h>
#include <unistd.h>
#endif

namespace belvor {

#ifdef _WIN32

std::vector<std::string> commandLine(int, char**)
{
    std::vector<std::string> arguments;
    int count = 0;
    wchar_t** const wide = CommandLineToArgvW(GetCommandLineW(), &count);
    for (int i = 0; wide && i < count; ++i) arguments.push_back(toUtf8(wide[i]));
    LocalFree(wide);
    return arguments;
}

void useSystemLibrariesOnly() noexcept
{
    using Function = BOOL(WINAPI*)(DWORD);   // older systems do not have it
    const auto function = reinterpret_cast<Function>(reinterpret_cast<void (*)()>(
        GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "SetDefaultDllDirectories")));
    if (function) function(0x800);   // LOAD_LIBRARY_SEARCH_SYSTEM32
}

void writeUtf8ToConsole() noexcept
{
    static const UINT before = GetConsoleOutputCP();   // 0: there is no console
    if (before == 0 || before == CP_UTF8 || !SetConsoleOutputCP(CP_UTF8)) return;
    std::atexit([] { SetConsoleOutputCP(before); });
}

bool standardErrorIsTerminal() noexcept { return _isatty(2) != 0; }

void refuseMemoryBeyondMachine() noexcept {}

bool limitMemory(std::uint64_t bytes) noexcept
{
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_PROCESS_MEMORY;
    limits.ProcessMemoryLimit = static_cast<SIZE_T>(std::min<std::uint64_t>(bytes, SIZE_MAX));
    const HANDLE job = CreateJobObjectW(nullptr, nullptr);   // kept: the limit lasts as long as the process
    return job && SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof limits)
           && AssignProcessToJobObject(job, GetCurrentProcess());
}

#else

std::vector<std::string> commandLine(int argc, char** argv) { return {argv, argv + argc}; }

void useSystemLibrariesOnly() noexcept {}

void writeUtf8ToConsole() noexcept {}

bool standardErrorIsTerminal() noexcept { return isatty(2) != 0; }

void refuseMemoryBeyondMachine() noexcept
{
#if defined(__linux__) && !defined(__SANITIZE_ADDRESS__)                                                     \
    && !defined(__SANITIZE_THREAD__)   // they reserve terabytes
    const long pages = sysconf(_SC_PHYS_PAGES), pageSize = sysconf(_SC_PAGESIZE);
    rlimit limit;
    if (pages <= 0 || pageSize <= 0 || getrlimit(RLIMIT_DATA, &limit) != 0) return;
    rlim_t all = static_cast<rlim_t>(pages) * static_cast<rlim_t>(pageSize);
    try {
        all = std::min<rlim_t>(all, grantedMemory());
    } catch (const std::bad_alloc&) {}   // then the machine's
    const rlim_t most = all / 10 * 9;
    if (limit.rlim_cur != RLIM_INFINITY && limit.rlim_cur <= most) return;
    limit.rlim_cur = most;
    setrlimit(RLIMIT_DATA, &limit);
#endif
}

bool limitMemory(std::uint64_t bytes) noexcept
{
#if defined(__linux__) && !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
    rlimit limit;
    if (getrlimit(RLIMIT_DATA, &limit) != 0) return false;
    if (limit.rlim_cur != RLIM_INFINITY && limit.rlim_cur <= bytes) return true;
    limit.rlim_cur = bytes;
    return setrlimit(RLIMIT_DATA, &limit) == 0;
#else
    static_cast<void>(bytes);
    return false;
#endif
}

#endif

std::string environmentValue(const char* name)
{
    const char* const value = std::getenv(name);
    return value ? value : "";
}

std::string temporaryNameFor(const std::string& path)
{
    const std::string_view name = fileName(path);
    return path.substr(0, path.size() - name.size()) + unusedNameFor(name);
}

}   // namespace belvor
