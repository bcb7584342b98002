#pragma once

#include "app/Belvor.h"
#include "app/FullScreen.h"
#include "app/ProgressDisplay.h"
#include "app/RecentFileList.h"
#include "app/Taskbar.h"
#include "platform/win32/Windows.h"
#include "ui/panels/FocusRing.h"

#include <shellapi.h>

#include <memory>
#include <optional>
#include <string>
#include <type_traits>

namespace belvor {

/// The main window: its children, where they lie, and where each message goes.
class MainWindow {
public:
    explicit MainWindow(HWND owner);
    ~MainWindow();
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam);

    // What the session has the window do.
    Session& session() noexcept { return core.session(); }
    RecentFileList& recentFiles() noexcept { return recent; }
    ProgressDisplay& progressDisplay() noexcept { return *progress; }
    void toggleFullScreen();
    /// Called for every button press in the drawing area.
    void leaveFullScreen();
    void toggleControls();
    /// Lays out the children again.
    void layOutAgain();
    /// Greys the menu items of the commands that cannot be given now, and checks those that are on.
    void updateCommands() const;
    /// What the status bar shows while no request runs.
    void setRemark(const std::string& text);

private:
    std::optional<LRESULT> handleOwn(UINT message, WPARAM wParam, LPARAM lParam);
    void create(const CREATESTRUCTW& record);
    HWND createChild(const wchar_t* className, const wchar_t* name, int id, DWORD style,
                     const RECT& area) const;
    void size(WPARAM type, int width, int height);
    void layOutChildren(int width, int height);
    void dpiChanged(const RECT& suggested);
    void takeIcons();
    void updateMenu();
    void activate(bool active);
    void command(WPARAM wParam, LPARAM lParam);
    void redrawRequest(WPARAM wParam, LPARAM lParam);
    void setImageSize(WPARAM width, LPARAM height);
    bool mayEnd();
    void endSession(bool ends) const;
    void imageEnded(WPARAM number, bool whole);
    void jobEnded(bool abandoned);
    void coloursChanged();
    void escape();
    void showRemark() const;
    void fileDropped(HDROP drop);
    LRESULT notify(NMHDR& header);

    struct DestroysIcon {
        void operator()(HICON icon) const noexcept { DestroyIcon(icon); }
    };
    using Icon = std::unique_ptr<std::remove_pointer_t<HICON>, DestroysIcon>;

    HWND window;
    Icon icons[2];   // by ICON_SMALL and ICON_BIG
    HWND statusBar = nullptr, toolTip = nullptr;
    HACCEL accelerators = nullptr;
    Belvor core;
    RecentFileList recent;
    FullScreen fullScreen;
    FocusMemory focus;
    Taskbar taskbar;
    std::optional<ProgressDisplay> progress;   // from the creation of the status bar on
    bool showControls = true;
    std::string remark;
};

/// Registers the class "Belvor". Throws Win32Error.
void registerMainWindow(HINSTANCE module);

}   // namespace belvor
