#include "app/Belvor.h"

#include "app/ClipboardPicture.h"
#include "app/Help.h"
#include "app/MainWindow.h"
#include "app/Paths.h"
#include "app/Settings.h"
#include "app/WindowHost.h"
#include "errors/Report.h"
#include "platform/Utf16.h"
#include "platform/Win32Error.h"
#include "platform/win32/Modal.h"
#include "render/queue/RenderThread.h"
#include "resources/ids.h"
#include "ui/Messages.h"
#include "ui/display/BitmapWindow.h"
#include "ui/display/WindowBuffer.h"

#include <utility>

namespace belvor {

Belvor::Belvor(MainWindow& owner, HWND window)
    : frame(owner),
      mainWindow(window),
      host(new WindowHost(window)),
      queue(makeHandle<RenderQueue>()),
      questions(window),
      core(*this, host),
      dialogs(window, core)
{
    startRenderThread(queue, host);
}

HWND Belvor::windowOf(Target target) const noexcept
{
    switch (target) {
    case Target::mainWindow: return mainWindow;
    case Target::display: return windows.display;
    case Target::plan: return windows.plan;
    case Target::elevation: return windows.elevation;
    default: return nullptr;
    }
}

/// A window that draws for itself names itself here: the first one of its kind is remembered.
void Belvor::redraw(HWND target, int which)
{
    constexpr Target targets[] = {Target::display, Target::plan, Target::elevation};
    HWND* const known[] = {&windows.display, &windows.plan, &windows.elevation};
    HWND& named = *known[which];
    if (!named) named = target;
    const HWND kept = std::exchange(named, target);
    core.redraw(targets[which]);
    named = kept;
}

void Belvor::warn(const std::string& text) { warning(text); }
bool Belvor::modalOpen() const { return Modal::open(); }
void Belvor::setStatus(const std::string& text) { belvor::setStatus(mainWindow, "%s", text.c_str()); }
void Belvor::setTitle(const std::string& title) { SetWindowTextW(mainWindow, toWide(title).c_str()); }
void Belvor::setRemark(const std::string& text) { frame.setRemark(text); }

void Belvor::showModel()
{
    frame.updateCommands();
    EnableWindow(windows.controls, TRUE);
    dialogs.modelChanged();
}

void Belvor::endDrags()
{
    send(windows.controls, UM_ENDDRAG, 0);
    if (IsChild(mainWindow, GetCapture())) ReleaseCapture();   // WM_CAPTURECHANGED ends the panels' drags
}

void Belvor::showMarkers(Thumbnail panel, const ViewMarkers& markers)
{
    if (panel == Thumbnail::plan) send(windows.plan, UM_VIEWMARKERS, markers, ID_PLAN);
    else send(windows.elevation, UM_VIEWMARKERS, markers, ID_ELEVATION);
}

void Belvor::showEyeSlide(const EyeSlideRecord& record)
{
    send(windows.eyeSlide, UM_EYESLIDE, record, handleParameter(windows.eyeSlide));
}

void Belvor::showLightMarker(const SphereMarker& marker)
{
    send(windows.sphere, UM_LIGHTMARKER, marker, handleParameter(windows.sphere));
}

void Belvor::removeLightMarker(std::size_t light)
{
    send(windows.sphere, UM_REMOVELIGHTMARKER, static_cast<INT_PTR>(light));
}

void Belvor::showIntensity(std::size_t slider, int position)
{
    send(windows.controls, UM_LIGHTINTENSITY, static_cast<INT_PTR>(slider), position);
}

void Belvor::imageSizeChanged() { frame.layOutAgain(); }
std::string Belvor::fullPath(const std::string& path) { return toUtf8(belvor::fullPath(toWide(path))); }
void Belvor::addRecent(const std::string& path) { frame.recentFiles().add(path); }

std::optional<std::string> Belvor::recentFile(std::size_t index)
{
    const std::string* const path = frame.recentFiles().pathOf(ID_RECENT + static_cast<UINT>(index));
    return path ? std::optional(*path) : std::nullopt;
}

void Belvor::watchFile(const std::string& path, const FileStamp& stamp)
{
    watch.emplace(mainWindow, path, stamp);
}

std::optional<Canvas> Belvor::canvas(Target target)
{
    const HWND window = windowOf(target);
    if (!window && target != Target::display) return std::nullopt;   // a panel that has not drawn yet
    RECT client;
    if (!GetClientRect(window, &client)) throw Win32Error("Belvor::redraw  GetClientRect");
    // The bitmap's size counts: it is what the rows are written into.
    const Handle<DibSection> bitmap = bitmapOf(window);
    if (!bitmap || !*bitmap) return std::nullopt;
    const bool progressive = target == Target::display;
    return Canvas{makeHandle<WindowBuffer>(window, bitmap, progressive), bitmap->width(), bitmap->height()};
}

void Belvor::post(Target target, Handle<Request> request)
{
    queue->post(kindOf(windowOf(target)), std::move(request));
}

void Belvor::cancel(Target target)
{
    if (const HWND window = windowOf(target)) queue->cancel(kindOf(window));
}

void Belvor::showHelp() { openHelp(mainWindow); }

void Belvor::copyPicture()
{
    const Handle<DibSection> shown = bitmapOf(windows.display);
    if (!shown || !*shown) return;
    setStatus(textOf(copyToClipboard(mainWindow, *shown) ? Text::pictureCopied : Text::pictureNotCopied));
}

void Belvor::settingsChanged()
{
    frame.updateCommands();
    saveSettings(core);
}

void Belvor::toggleFullScreen() { frame.toggleFullScreen(); }
void Belvor::leaveFullScreen() { frame.leaveFullScreen(); }
void Belvor::toggleControls() { frame.toggleControls(); }

}   // namespace belvor
