#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace belvor {

/// The model files opened last, the most recent first. Paths are UTF-8.
class RecentPaths {
public:
    static constexpr std::size_t maxCount = 8;

    /// Puts `path` to the front. An entry of exactly that text moves there; else the oldest
    /// goes when the list is full.
    void add(const std::string& path);
    const std::vector<std::string>& entries() const noexcept { return paths; }
    /// The menu's text for entry `index`, its number as the mnemonic.
    std::string menuText(std::size_t index) const;

private:
    std::vector<std::string> paths;
};

/// A path as a menu shows it: whole up to 20 characters (UTF-16 units), else its root, "..."
/// and as much of its end as fits. The file's name is never cut.
std::string displayName(const std::string& path);

}   // namespace belvor
