#pragma once

#include "platform/FileStamp.h"
#include "platform/Handle.h"
#include "platform/win32/Windows.h"

#include <string>

namespace belvor {

/// Looks once a second, on a thread of its own, whether a file is still the one that it was. Any kind of
/// disk: one that does not answer holds up nothing but that thread.
class FileWatch {
public:
    /// Posts UM_FILECHANGED to `mainWindow`, once, when the file `path` (UTF-8) has another stamp and keeps
    /// it for a second. Throws Win32Error.
    FileWatch(HWND mainWindow, std::string path, const FileStamp& stamp);
    FileWatch(const FileWatch&) = delete;
    FileWatch& operator=(const FileWatch&) = delete;
    ~FileWatch();

private:
    struct State;
    Handle<State> state;   // the thread keeps one too, as long as it waits for the disk
};

}   // namespace belvor
