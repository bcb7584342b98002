#include "platform/Processors.h"

#include "platform/Files.h"

#include <algorithm>
#include <charconv>
#include <string>
#include <thread>

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

std::string contentOf(const std::string& path)
{
    std::string bytes;
    if (!readWholeFile(path, bytes)) bytes.clear();
    while (!bytes.empty() && bytes.back() == '\n') bytes.pop_back();
    return bytes;
}

/// The path of the process in the hierarchy whose line in `groups`, the content of
/// /proc/self/cgroup, has `controller` among the names of its second field when these stand
/// between commas; "/" when there is none.
std::string groupPath(std::string_view groups, std::string_view controller)
{
    while (!groups.empty()) {
        const std::string_view line = groups.substr(0, groups.find('\n'));
        groups.remove_prefix(std::min(groups.size(), line.size() + 1));
        const std::size_t first = line.find(':'), second = line.find(':', first + 1);
        if (second == std::string_view::npos) continue;
        std::string names(1, ',');
        names.append(line.substr(first + 1, second - first - 1)).push_back(',');
        if (names.find(controller) != std::string::npos) return std::string(line.substr(second + 1));
    }
    return "/";
}

/// The least that the groups from `path` up to the root grant; `read` gives the content of a
/// group's cpu.max from its folder. 0 without a limit.
template <class Read>
unsigned leastGranted(std::string path, Read read)
{
    unsigned least = 0;
    while (true) {
        if (const unsigned granted = processorsGranted(read(path)); granted != 0)
            least = least == 0 ? granted : std::min(least, granted);
        if (path.empty()) return least;
        path.resize(path.rfind('/') == std::string::npos ? 0 : path.rfind('/'));
    }
}

unsigned processorsOfQuota()
{
    const std::string root = "/sys/fs/cgroup", groups = contentOf("/proc/self/cgroup");
    if (const unsigned granted =
            leastGranted(groupPath(groups, ",,"),
                         [&root](const std::string& path) { return contentOf(root + path + "/cpu.max"); });
        granted != 0)
        return granted;
    // The older layout has one tree for each controller.
    return leastGranted(groupPath(groups, ",cpu,"), [&root](const std::string& path) {
        const std::string folder = root + "/cpu" + path;
        return contentOf(folder + "/cpu.cfs_quota_us") + " " + contentOf(folder + "/cpu.cfs_period_us");
    });
}

#endif

}   // namespace

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
