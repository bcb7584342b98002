#include "platform/Processors.h"

#include "platform/ControlGroups.h"

#include <algorithm>
#include <charconv>
#include <string>
#include <thread>
#include <vector>

#ifdef _WIN32
#include "platform/win32/Windows.h"
#elif defined(__linux__)
#include <sched.h>
#endif

namespace belvor {
namespace {

#ifdef _WIN32

/// 0 when not known.
unsigned processorsOfAffinity() noexcept
{
    DWORD_PTR own = 0, machine = 0;
    if (!GetProcessAffinityMask(GetCurrentProcess(), &own, &machine)) return 0;
    unsigned count = 0;
    for (; own != 0; own &= own - 1) ++count;
    return count;
}

/// The hard limit of the job that the process belongs to; 0 without one.
unsigned processorsOfQuota()
{
    JOBOBJECT_CPU_RATE_CONTROL_INFORMATION limit{};
    if (!QueryInformationJobObject(nullptr, JobObjectCpuRateControlInformation, &limit, sizeof limit,
                                   nullptr))
        return 0;
    constexpr DWORD hardLimit = JOB_OBJECT_CPU_RATE_CONTROL_ENABLE | JOB_OBJECT_CPU_RATE_CONTROL_HARD_CAP;
    if ((limit.ControlFlags & hardLimit) != hardLimit) return 0;
    SYSTEM_INFO machine;
    GetSystemInfo(&machine);   // the rate is a share of all processors, in hundredths of a percent
    return (limit.CpuRate * machine.dwNumberOfProcessors + 9999) / 10000;
}

#else

unsigned processorsOfAffinity() noexcept
{
#ifdef __linux__
    cpu_set_t own;
    if (sched_getaffinity(0, sizeof own, &own) == 0) return static_cast<unsigned>(CPU_COUNT(&own));
#endif
    return 0;
}

/// The least that the groups in `folders` grant; `read` gives the content of a group's cpu.max from its
/// folder. 0 without a limit.
template <class Read>
unsigned leastGranted(const std::vector<std::string>& folders, Read read)
{
    unsigned least = 0;
    for (const std::string& folder : folders)
        if (const unsigned granted = processorsGranted(read(folder)); granted != 0)
            least = least == 0 ? granted : std::min(least, granted);
    return least;
}

unsigned processorsOfQuota()
{
    const unsigned granted = leastGranted(controlGroupFolders(""), [](const std::string& folder) {
        return contentOfFile(folder + "/cpu.max");
    });
    if (granted != 0) return granted;
    // The older layout has one tree for each controller.
    return leastGranted(controlGroupFolders("cpu"), [](const std::string& folder) {
        return contentOfFile(folder + "/cpu.cfs_quota_us") + " "
               + contentOfFile(folder + "/cpu.cfs_period_us");
    });
}

#endif

}   // namespace

#if defined(__x86_64__) || defined(__i386__)

bool hasWideVectors() noexcept { return __builtin_cpu_supports("avx2") != 0; }

bool hasWidestVectors() noexcept
{
    return __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512vl")
           && __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512bw");
}

#else

bool hasWideVectors() noexcept { return false; }
bool hasWidestVectors() noexcept { return false; }

#endif

unsigned processorsGranted(std::string_view cpuMax) noexcept
{
    unsigned long long quota = 0, period = 0;
    const char* const end = cpuMax.data() + cpuMax.size();
    const auto [afterQuota, quotaFault] = std::from_chars(cpuMax.data(), end, quota);
    if (quotaFault != std::errc() || afterQuota == end || *afterQuota != ' ') return 0;
    const auto [afterPeriod, periodFault] = std::from_chars(afterQuota + 1, end, period);
    if (periodFault != std::errc() || (afterPeriod != end && *afterPeriod != '\n')) return 0;
    if (quota == 0 || period == 0) return 0;
    return static_cast<unsigned>(std::min((quota - 1) / period + 1, 1ull << 20));
}

unsigned usableProcessors() noexcept
try {
    unsigned count = processorsOfAffinity();
    if (count == 0) count = std::thread::hardware_concurrency();
    const unsigned granted = processorsOfQuota();
    if (granted != 0) count = std::min(count, granted);
    return std::max(count, 1u);
} catch (...) {
    return 1;
}

}   // namespace belvor
