#pragma once

#include "platform/win32/Windows.h"
#include "view/RecentPaths.h"

#include <string>

namespace belvor {

/// The files opened last, in the File menu and from one run of the program to the next.
/// Failures to write the registry are ignored.
class RecentFileList {
public:
    /// Reads the list and puts it into the menu of `mainWindow`.
    explicit RecentFileList(HWND mainWindow);
    RecentFileList(const RecentFileList&) = delete;
    RecentFileList& operator=(const RecentFileList&) = delete;
    /// Writes the list.
    ~RecentFileList();

    /// Puts `path` (UTF-8, full) to the front, in the menu too.
    void add(const std::string& path);
    /// The path that command `id` opens; none for a number without an entry.
    const std::string* pathOf(UINT id) const noexcept;
    /// Writes the list now: Windows may end the program without another message.
    void save() const;

private:
    void load();
    void rebuildMenu();

    HWND owner;
    RecentPaths paths;
    int itemsInMenu = 1;   // the placeholder
};

}   // namespace belvor
