#include "app/MainWindow.h"

#include "app/MessageLoop.h"
#include "app/PanelRequests.h"
#include "app/Paths.h"
#include "app/Settings.h"
#include "app/StatusHelp.h"
#include "errors/Report.h"
#include "platform/Utf16.h"
#include "platform/Win32Error.h"
#include "platform/win32/Modal.h"
#include "platform/win32/Window.h"
#include "resources/Texts.h"
#include "resources/ids.h"
#include "session/Commands.h"
#include "ui/ClientSize.h"
#include "ui/Messages.h"
#include "ui/SystemColours.h"
#include "ui/WindowScale.h"
#include "ui/panels/FocusRing.h"
#include "view/WindowLayout.h"

#include <commctrl.h>
#include <shellapi.h>

#include <algorithm>
#include <limits>
#include <utility>

namespace belvor {
namespace {

constexpr int firstBottomMargin = 30;   // until the first layout knows the status bar's height

void requireLayout(bool done)
{
    if (!done) throw Win32Error("WM_SIZE");
}

unsigned shownHandle(HWND window) { return static_cast<unsigned>(reinterpret_cast<std::uintptr_t>(window)); }

}   // namespace

MainWindow::MainWindow(HWND owner)
    : window(owner),
      core(*this, owner),
      recent(owner),
      fullScreen(owner),
      taskbar(owner)
{}

MainWindow::~MainWindow() = default;

LRESULT MainWindow::handle(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_CREATE: create(*reinterpret_cast<const CREATESTRUCTW*>(lParam)); return 0;
    case WM_SIZE: size(wParam, LOWORD(lParam), HIWORD(lParam)); return 0;
    case WM_ACTIVATE:
        activate(LOWORD(wParam) != WA_INACTIVE);
        DefWindowProcW(window, message, wParam, lParam);
        focus.activated(window, LOWORD(wParam) != WA_INACTIVE);
        return 0;
    case WM_DPICHANGED: dpiChanged(*reinterpret_cast<const RECT*>(lParam)); return 0;
    case WM_GETMINMAXINFO: fullScreen.limit(*reinterpret_cast<MINMAXINFO*>(lParam)); return 0;
    case WM_CLOSE: session().close(); return 0;
    case WM_QUERYENDSESSION: return mayEnd();
    case WM_ENDSESSION: endSession(wParam != FALSE); return 0;
    case WM_DESTROY:
        setReportWindow(nullptr);
        PostQuitMessage(0);
        return 0;
    case WM_COMMAND: command(wParam, lParam); return 0;
    case WM_MENUSELECT: showMenuHelp(window, statusBar, recent, wParam, lParam); return 0;
    case WM_KEYDOWN:
        if (wParam == VK_TAB) focusNextControl(core.windows.controls, GetKeyState(VK_SHIFT) < 0);
        if (wParam == VK_ESCAPE) escape();
        break;
    case WM_INITMENUPOPUP: updateCommands(); break;
    case WM_HELP: static_cast<Shell&>(core).showHelp(); return TRUE;
    case WM_NOTIFY: return notify(*reinterpret_cast<NMHDR*>(lParam));
    case WM_DRAWITEM:
        if (wParam == ID_STATUSBAR) ProgressDisplay::draw(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
        return TRUE;
    case WM_DROPFILES: fileDropped(reinterpret_cast<HDROP>(wParam)); return 0;
    case WM_SYSCOLORCHANGE:
    case WM_THEMECHANGED:
    case WM_SETTINGCHANGE: coloursChanged(); break;
    default:
        if (const std::optional<LRESULT> answer = handleOwn(message, wParam, lParam)) return *answer;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

/// The program's own messages; nothing for another one.
std::optional<LRESULT> MainWindow::handleOwn(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case UM_IMAGESIZE: setImageSize(wParam, lParam); return 0;
    case UM_PROGRESS:
        if (progress) progress->start(*reinterpret_cast<Progress*>(wParam));
        if (session().loading().running() || session().saving().running())
            taskbar.show(*reinterpret_cast<const Progress*>(wParam));
        return progress.has_value();
    case UM_ADDTOOL: return SendMessageW(toolTip, TTM_ADDTOOLW, 0, lParam);
    case UM_DELTOOL: return SendMessageW(toolTip, TTM_DELTOOLW, 0, lParam);
    case UM_SHOWTIPS: return SendMessageW(toolTip, TTM_ACTIVATE, wParam, 0);
    case UM_JOINCHANGES: session().joinChanges(wParam != FALSE); return 0;
    case UM_FILECHANGED: session().fileChanged(); return 0;
    case UM_FILEREFUSED: session().loading().refused(reinterpret_cast<const char*>(wParam)); return 0;
    case UM_JOBENDED: jobEnded(wParam != FALSE); return 0;
    case UM_MODELLOADED:
        session().loading().modelLoaded(static_cast<std::uint32_t>(wParam), reinterpret_cast<Model*>(lParam));
        return 0;
    case UM_IMAGEENDED: imageEnded(wParam, lParam != FALSE); return 0;
    case UM_THREADENDED:
        // This object is gone when the call returns.
        if (!DestroyWindow(window)) throw Win32Error("DestroyWindow");
        return 0;
    default:
        if (applyPanelRequest(core, message, wParam, lParam)) return 0;
        return std::nullopt;
    }
}

void MainWindow::create(const CREATESTRUCTW& record)
{
    setReportWindow(window);
    toolTip =
        CreateWindowExW(0, TOOLTIPS_CLASSW, L"ToolTip", WS_POPUP | WS_VISIBLE, CW_USEDEFAULT, CW_USEDEFAULT,
                        CW_USEDEFAULT, CW_USEDEFAULT, window, nullptr, record.hInstance, nullptr);
    statusBar = CreateStatusWindowW(
        static_cast<LONG>(WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | CCS_BOTTOM | SBARS_SIZEGRIP),
        toWide(textOf(Text::start)).c_str(), window, ID_STATUSBAR);
    progress.emplace(window, statusBar);
    takeIcons();
    RECT client{};
    GetClientRect(window, &client);
    const PixelScale scale = scaleOf(window);
    const LONG left = client.right - scale(WindowLayout::controlsWidth),
               bottom = client.bottom - scale(firstBottomMargin);
    core.windows.display = createChild(L"Display", L"Drawing", ID_DISPLAY, 0, {0, 0, left, bottom});
    core.windows.controls = createChild(L"Controls", L"ControlPanel", ID_CONTROLS,
                                        WS_CLIPCHILDREN | WS_DISABLED, {left, 0, client.right, bottom});
    loadSettings(session());
    followDarkMode(window);
    updateCommands();
    accelerators = LoadAcceleratorsW(record.hInstance, MAKEINTRESOURCEW(ID_ACCELERATORS));
    if (!accelerators) setStatus(window, textOf(Text::acceleratorsFailed), static_cast<int>(GetLastError()));
    DragAcceptFiles(window, TRUE);
}

HWND MainWindow::createChild(const wchar_t* className, const wchar_t* name, int id, DWORD style,
                             const RECT& area) const
{
    return CreateWindowExW(0, className, name, WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | style, area.left,
                           area.top, area.right - area.left, area.bottom - area.top, window,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                           reinterpret_cast<HINSTANCE>(GetWindowLongPtrW(window, GWLP_HINSTANCE)), nullptr);
}

void MainWindow::size(WPARAM type, int width, int height)
{
    if (type != SIZE_RESTORED && type != SIZE_MAXIMIZED) return;
    if (fullScreen.on() && type == SIZE_RESTORED) {
        fullScreen.end();
        updateMenu();
    }
    layOutChildren(width, height);
}

void MainWindow::layOutChildren(int width, int height)
{
    if (!statusBar) return;   // still being created
    RECT status;
    requireLayout(GetWindowRect(statusBar, &status));
    const WindowLayout layout = layOut({width, height, status.bottom - status.top, fullScreen.on(),
                                        showControls, session().imageSize(), scaleOf(window)});
    const auto move = [](HWND child, const PixelArea& area) {
        requireLayout(!child || MoveWindow(child, area.x, area.y, area.width, area.height, TRUE));
    };
    if (!fullScreen.on()) {
        move(statusBar, layout.status);
        requireLayout(SendMessageW(statusBar, SB_SETPARTS, WindowLayout::statusParts,
                                   reinterpret_cast<LPARAM>(layout.partEnds))
                      != 0);
        if (showControls) move(core.windows.controls, layout.controls);
    }
    move(core.windows.display, layout.display);
    // What a smaller drawing area leaves is the window's own to paint.
    InvalidateRect(window, nullptr, TRUE);
}

/// The icon in the sizes of the monitor that the window is on.
void MainWindow::takeIcons()
{
    // Not shared ones: of those the system may give the first that was loaded, whatever its size.
    for (const auto& [kind, metric] : {std::pair{ICON_SMALL, SM_CXSMICON}, {ICON_BIG, SM_CXICON}}) {
        const int size = metricOf(window, metric);
        Icon icon(static_cast<HICON>(
            LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(ID_ICON), IMAGE_ICON, size, size, 0)));
        SendMessageW(window, WM_SETICON, static_cast<WPARAM>(kind), reinterpret_cast<LPARAM>(icon.get()));
        icons[kind].swap(icon);
    }
}

/// The window has come to a monitor of another scale; `suggested` is the area that keeps its apparent size.
void MainWindow::dpiChanged(const RECT& suggested)
{
    SetWindowPos(window, nullptr, suggested.left, suggested.top, suggested.right - suggested.left,
                 suggested.bottom - suggested.top, SWP_NOZORDER | SWP_NOACTIVATE);
    takeIcons();
    layOutAgain();
    // A strip that keeps its number of pixels must be laid out again too.
    const PixelSize strip = clientSize(core.windows.controls);
    SendMessageW(core.windows.controls, WM_SIZE, SIZE_RESTORED, MAKELPARAM(strip.width, strip.height));
    InvalidateRect(core.windows.controls, nullptr, TRUE);
}

void MainWindow::layOutAgain()
{
    RECT client;
    requireLayout(GetClientRect(window, &client));
    if (!IsIconic(window)) layOutChildren(client.right, client.bottom);
}

void MainWindow::updateMenu()
{
    const HMENU menu = GetMenu(window);
    CheckMenuItem(menu, ID_FULLSCREEN, fullScreen.on() ? MF_CHECKED : MF_UNCHECKED);
    CheckMenuItem(menu, ID_SHOWCONTROLS, showControls ? MF_CHECKED : MF_UNCHECKED);
    EnableMenuItem(menu, ID_SHOWCONTROLS, fullScreen.on() ? MF_GRAYED : MF_ENABLED);
    ShowWindow(core.windows.controls, showControls && !fullScreen.on() ? SW_SHOW : SW_HIDE);
    ShowWindow(statusBar, fullScreen.on() ? SW_HIDE : SW_SHOW);
}

void MainWindow::toggleFullScreen()
{
    fullScreen.toggle();
    updateMenu();
    layOutAgain();
}

void MainWindow::leaveFullScreen()
{
    if (fullScreen.on()) toggleFullScreen();
}

void MainWindow::toggleControls()
{
    showControls = !showControls;
    updateMenu();
    layOutAgain();
}

void MainWindow::activate(bool active)
{
    if (active) setActiveWindow(window, accelerators);
    else setActiveWindow(nullptr, nullptr);
}

void MainWindow::updateCommands() const
{
    const HMENU menu = GetMenu(window);
    for (const Command& command : commands()) {
        const UINT id = static_cast<UINT>(command.id);
        if (id == ID_SHOWCONTROLS || id == ID_FULLSCREEN) continue;   // updateMenu()
        EnableMenuItem(menu, id, available(command, core.session()) ? MF_ENABLED : MF_GRAYED);
        if (command.isOn) CheckMenuItem(menu, id, command.isOn(core.session()) ? MF_CHECKED : MF_UNCHECKED);
    }
}

void MainWindow::command(WPARAM wParam, LPARAM lParam)
{
    const UINT id = LOWORD(wParam);
    if (id == ID_REDRAWPANEL) return redrawRequest(wParam, lParam);
    endMenuHelp(statusBar);
    if (!runCommand(session(), static_cast<int>(id)))
        setStatus(window, textOf(Text::unknownCommand), shownHandle(window), HIWORD(wParam),
                  static_cast<int>(id), shownHandle(reinterpret_cast<HWND>(lParam)));
}

void MainWindow::redrawRequest(WPARAM wParam, LPARAM lParam)
{
    const HWND sender = reinterpret_cast<HWND>(lParam);
    if (!sender) return core.redraw(core.windows.display, 0);
    switch (HIWORD(wParam)) {
    case ID_DISPLAY: return core.redraw(sender, 0);
    case ID_PLAN: return core.redraw(sender, 1);
    case ID_ELEVATION: return core.redraw(sender, 2);
    default: fatal(textOf(Text::unexpectedSender), static_cast<int>(LOWORD(wParam)));
    }
}

void MainWindow::setImageSize(WPARAM width, LPARAM height)
{
    constexpr auto largest = static_cast<std::uint64_t>(std::numeric_limits<int>::max());
    if (width == 0 || height == 0) return;
    session().setImageSize(
        {static_cast<int>(std::min<std::uint64_t>(width, largest)),
         static_cast<int>(std::min<std::uint64_t>(static_cast<std::uint64_t>(height), largest))});
}

void MainWindow::fileDropped(HDROP drop)
{
    std::wstring path(DragQueryFileW(drop, 0, nullptr, 0), L'\0');
    DragQueryFileW(drop, 0, path.data(), static_cast<UINT>(path.size()) + 1);
    DragFinish(drop);
    if (path.empty() || Modal::open()) return;
    SetForegroundWindow(window);   // the question must not appear behind the window that the file came from
    session().loading().openFile(toUtf8(path));
}

/// Windows wants to end. Where the answer is no, it shows the user the reason given here.
bool MainWindow::mayEnd()
{
    ShutdownBlockReasonCreate(window,
                              toWide(textOf(Text::imageUnsavedReason)).c_str());   // while it is asked
    const Text reason = session().reasonToStay();
    ShutdownBlockReasonDestroy(window);
    if (reason != Text::none) {
        ShutdownBlockReasonCreate(window, toWide(textOf(reason)).c_str());
        return false;
    }
    recent.save();   // Windows may end the process without another message
    return true;
}

void MainWindow::endSession(bool ends) const
{
    if (ends) recent.save();
    else if (!core.session().saving().running()) ShutdownBlockReasonDestroy(window);
}

void MainWindow::imageEnded(WPARAM number, bool whole)
{
    session().saving().imageEnded(static_cast<std::uint32_t>(number), whole);
    if (!session().saving().running()) ShutdownBlockReasonDestroy(window);
}

/// A request has ended; no other may be running.
void MainWindow::jobEnded(bool abandoned)
{
    if (!session().loading().running() && !session().saving().running()) taskbar.clear();
    if (!abandoned) showRemark();
}

/// The user has chosen other colours. The thumbnails stand on one of them.
void MainWindow::coloursChanged()
{
    refreshSystemColours();
    followDarkMode(window);
    SendMessageW(core.windows.controls, WM_SYSCOLORCHANGE, 0, 0);
    SendMessageW(statusBar, WM_SYSCOLORCHANGE, 0, 0);
    for (const Target panel : {Target::plan, Target::elevation}) session().redraw(panel);
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

/// A drag comes first: it is what the user sees.
void MainWindow::escape()
{
    HWND const dragging = GetCapture();
    if (dragging && IsChild(window, dragging)) static_cast<Shell&>(core).endDrags();
    else runCommand(session(), ID_STOP);
}

void MainWindow::setRemark(const std::string& text)
{
    if (text.empty() && remark.empty()) return;
    remark = text;
    showRemark();
}

void MainWindow::showRemark() const
{
    if (!remark.empty()) setStatus(window, "%s", remark.c_str());
}

LRESULT MainWindow::notify(NMHDR& header)
{
    if (header.code != TTN_GETDISPINFOW) return 0;
    auto& request = reinterpret_cast<NMTTDISPINFOW&>(header);
    const UINT_PTR id = request.uFlags & TTF_IDISHWND
                            ? static_cast<UINT_PTR>(GetDlgCtrlID(reinterpret_cast<HWND>(header.idFrom)))
                            : header.idFrom;
    request.lpszText = MAKEINTRESOURCEW(id);
    request.hinst = reinterpret_cast<HINSTANCE>(GetWindowLongPtrW(window, GWLP_HINSTANCE));
    return 0;
}

void registerMainWindow(HINSTANCE module)
{
    WNDCLASSEXW record = windowClass<MainWindow>(module, L"Belvor");
    record.hIcon = LoadIconW(module, MAKEINTRESOURCEW(ID_ICON));
    record.hIconSm = static_cast<HICON>(LoadImageW(module, MAKEINTRESOURCEW(ID_ICON), IMAGE_ICON,
                                                   GetSystemMetrics(SM_CXSMICON),
                                                   GetSystemMetrics(SM_CYSMICON), LR_SHARED));
    record.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_APPWORKSPACE + 1);
    record.lpszMenuName = L"MENU";
    if (!RegisterClassExW(&record)) throw Win32Error("RegisterClass Belvor");
}

}   // namespace belvor
