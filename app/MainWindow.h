#pragma once

#include "app/Belvor.h"
#include "app/Dialogs.h"
#include "app/FullScreen.h"
#include "app/Loading.h"
#include "app/ProgressDisplay.h"
#include "app/RecentFileList.h"
#include "app/Saving.h"
#include "platform/win32/Windows.h"
#include "ui/panels/FocusRing.h"

#include <shellapi.h>

#include <optional>
#include <string>

namespace belvor {

/// The main window: its children and their places, and where each message goes.
class MainWindow {
public:
    explicit MainWindow(HWND owner);
    ~MainWindow();
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam);

    // The commands' view of the window.
    Belvor& belvor() noexcept { return core; }
    Loading& loading() noexcept { return loader; }
    Saving& saving() noexcept { return saver; }
    Dialogs& dialogs() noexcept { return dialogSet; }
    ProgressDisplay& progressDisplay() noexcept { return *progress; }
    HWND handleOfWindow() const noexcept { return window; }
    void toggleFullScreen();
    /// Called for every button press in the drawing area.
    void leaveFullScreen();
    void toggleControls();
    /// Ends the program, unless the user wants to save first.
    void close();

private:
    void create(const CREATESTRUCTW& record);
    HWND createChild(const wchar_t* className, const wchar_t* name, int id, DWORD style,
                     const RECT& place) const;
    void size(WPARAM type, int width, int height);
    void layOutChildren(int width, int height);
    void layOutAgain();
    void dpiChanged(const RECT& suggested);
    void updateMenu();
    void activate(bool active);
    void command(WPARAM wParam, LPARAM lParam);
    void redrawRequest(WPARAM wParam, LPARAM lParam);
    void setImageSize(WPARAM width, LPARAM height);
    void endDrag() const;
    void modelLoaded(const char* path, Model* model);
    void fileDropped(HDROP drop);
    LRESULT notify(NMHDR& header);

    HWND window;
    HWND statusBar = nullptr, toolTip = nullptr;
    HACCEL accelerators = nullptr;
    Belvor core;
    RecentFileList recent;
    Saving saver;
    Loading loader;
    Dialogs dialogSet;
    FullScreen fullScreen;
    FocusMemory focus;
    std::optional<ProgressDisplay> progress;   // from the creation of the status bar on
    bool showControls = true;
};

/// Registers the class "Belvor". Throws Win32Error.
void registerMainWindow(HINSTANCE module);

}   // namespace belvor
