#include "platform/ControlGroups.h"

#include "platform/Files.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <system_error>

namespace belvor {
namespace {

constexpr std::uint64_t noLimit = std::numeric_limits<std::uint64_t>::max();

/// The least number in the files of that name; words such as "max" are no limit.
[[maybe_unused]] std::uint64_t leastIn(const std::vector<std::string>& folders, const char* file)
{
    std::uint64_t least = noLimit;
    for (const std::string& folder : folders) {
        const std::string text = contentOfFile(folder + file);
        std::uint64_t limit = 0;
        const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), limit);
        if (fault == std::errc() && end == text.data() + text.size()) least = std::min(least, limit);
    }
    return least;
}

}   // namespace

std::vector<std::string> controlGroupFolders(std::string_view groups, std::string_view controller)
{
    std::string path;
    while (!groups.empty()) {   // lines as "4:cpu,cpuacct:/user/job" or, of the shared tree, "0::/user/job"
        const std::string_view line = groups.substr(0, groups.find('\n'));
        groups.remove_prefix(std::min(groups.size(), line.size() + 1));
        const std::size_t first = line.find(':'), second = line.find(':', first + 1);
        if (second == std::string_view::npos) continue;
        std::string names(1, ',');
        names.append(line.substr(first + 1, second - first - 1)).push_back(',');
        std::string wanted(1, ',');
        wanted.append(controller).push_back(',');
        if (names.find(wanted) == std::string::npos) continue;
        path = line.substr(second + 1);
        break;
    }
    std::string root = "/sys/fs/cgroup";
    if (!controller.empty()) root.append("/").append(controller);
    std::vector<std::string> folders;
    while (!path.empty()) {
        if (path != "/") folders.push_back(root + path);
        path.resize(path.rfind('/') == std::string::npos ? 0 : path.rfind('/'));
    }
    folders.push_back(root);
    return folders;
}

std::vector<std::string> controlGroupFolders(std::string_view controller)
{
    return controlGroupFolders(contentOfFile("/proc/self/cgroup"), controller);
}

std::string contentOfFile(const std::string& path)
{
    std::string bytes;
    if (!readWholeFile(path, bytes)) bytes.clear();
    while (!bytes.empty() && bytes.back() == '\n') bytes.pop_back();
    return bytes;
}

std::uint64_t grantedMemory()
{
#ifdef __linux__
    return std::min(leastIn(controlGroupFolders(""), "/memory.max"),
                    leastIn(controlGroupFolders("memory"), "/memory.limit_in_bytes"));
#else
    return noLimit;
#endif
}

}   // namespace belvor
