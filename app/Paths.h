#pragma once

#include "platform/win32/Windows.h"

#include <string>

namespace belvor {

/// The path of the running program. Throws Win32Error "GetModuleFileName".
std::wstring programPath();
/// The absolute form of a path. Throws Win32Error "GetFullPathName".
std::wstring fullPath(const std::wstring& path);

}   // namespace belvor
