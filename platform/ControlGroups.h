#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace belvor {

/// The folders of the control groups of a process, its own first, then those around it up to the root.
/// `groups` is the content of its /proc/PID/cgroup; `controller` names a tree of the older layout, such as
/// "memory", or is empty for the tree that all controllers share.
std::vector<std::string> controlGroupFolders(std::string_view groups, std::string_view controller);
/// The same of this process.
std::vector<std::string> controlGroupFolders(std::string_view controller);

/// The file's content without line ends behind it; empty when it cannot be read.
std::string contentOfFile(const std::string& path);

/// The bytes of memory that the control groups of this process grant it; the largest number without a limit,
/// and on systems without such groups.
std::uint64_t grantedMemory();

}   // namespace belvor
