#include "view/RecentPaths.h"

#include <string_view>

namespace belvor {
namespace {

constexpr std::size_t longestName = 20, longestMenuName = 500;

bool isSeparator(char c) { return c == '/' || c == '\\'; }
bool isLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

/// UTF-16 units of the character that starts with this byte of UTF-8; 0 within a character.
std::size_t units(char byte)
{
    const auto value = static_cast<unsigned char>(byte);
    return (value & 0xC0) == 0x80 ? 0 : value >= 0xF0 ? 2 : 1;
}

std::size_t length(std::string_view text)
{
    std::size_t count = 0;
    for (const char c : text) count += units(c);
    return count;
}

/// Bytes of "X:\", "\\server\share\" or a separator at the start.
std::size_t rootLength(std::string_view path)
{
    if (path.size() >= 3 && isLetter(path[0]) && path[1] == ':' && isSeparator(path[2])) return 3;
    if (path.substr(0, 2) == "\\\\") {
        const std::size_t share = path.find_first_of("/\\", 2);
        const std::size_t end = share == path.npos ? path.npos : path.find_first_of("/\\", share + 1);
        return end == path.npos ? path.size() : end + 1;
    }
    return !path.empty() && isSeparator(path[0]) ? 1 : 0;
}

}   // namespace

void RecentPaths::add(const std::string& path)
{
    std::erase(paths, path);
    if (paths.size() == maxCount) paths.pop_back();
    paths.insert(paths.begin(), path);
}

std::string RecentPaths::menuText(std::size_t index) const
{
    std::string text = "&";
    text += std::to_string(index + 1);
    text += ' ';
    std::size_t room = longestMenuName;
    for (const char c : displayName(paths[index])) {
        if (units(c) > room) break;
        room -= units(c);
        if (c == '&') text += '&';   // one alone would underline the next character
        text += c;
    }
    return text;
}

std::string displayName(const std::string& path)
{
    if (length(path) <= longestName) return path;
    const std::size_t root = rootLength(path);
    std::string shortest = path;
    for (std::size_t i = root; i < path.size(); ++i) {
        if (!isSeparator(path[i])) continue;
        shortest = path.substr(0, root) + "..." + path.substr(i);
        if (length(shortest) <= longestName) break;
    }
    return shortest;
}

}   // namespace belvor
