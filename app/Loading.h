#pragma once

#include "app/Belvor.h"
#include "app/FileDialog.h"
#include "app/RecentFileList.h"
#include "app/Saving.h"

#include <string>

namespace belvor {

/// The ways to open a model file: the dialog, the recent files, the command line, a dropped file.
class Loading {
public:
    Loading(HWND mainWindow, Belvor& shown, Saving& saving, RecentFileList& recent);

    void openModel();
    /// The recent file of command `id`.
    void openRecent(UINT id);
    /// Any path, UTF-16; after the question whether to save.
    void openFile(const std::wstring& path);

private:
    void loadFile(const std::string& path, FileType type);

    HWND window;
    Belvor& belvor;
    Saving& saving;
    RecentFileList& recent;
    FileDialog dialog;
};

}   // namespace belvor
