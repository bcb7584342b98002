#include "app/Paths.h"

#include "platform/Win32Error.h"

namespace belvor {
namespace {

constexpr DWORD usualLength = 260;

}   // namespace

std::wstring programPath()
{
    std::wstring path(usualLength, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
        if (length == 0) throw Win32Error("GetModuleFileName");
        if (length < path.size()) return path.substr(0, length);
        path.resize(2 * path.size());   // cut off
    }
}

std::wstring fullPath(const std::wstring& path)
{
    std::wstring full(usualLength, L'\0');
    for (;;) {
        const DWORD length =
            GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
        if (length == 0) throw Win32Error("GetFullPathName");
        if (length < full.size()) return full.substr(0, length);
        full.resize(length);   // what it needs, for longer paths
    }
}

}   // namespace belvor
