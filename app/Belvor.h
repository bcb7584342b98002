#pragma once

#include "app/Dialogs.h"
#include "app/FileWatch.h"
#include "app/Questions.h"
#include "platform/win32/Windows.h"
#include "render/queue/RenderHost.h"
#include "render/queue/RenderQueue.h"
#include "session/Session.h"

#include <optional>
#include <string>

namespace belvor {

class MainWindow;

/// The main window's session with what it needs of windows: the render thread, the windows that
/// show the view, the questions and dialogs. Interface thread.
class Belvor : public Shell {
public:
    /// Where views are shown; null as long as a window does not exist or has not been heard of.
    struct Windows {
        HWND display = nullptr, controls = nullptr;
        HWND plan = nullptr, elevation = nullptr, eyeSlide = nullptr, sphere = nullptr;
    };

    /// Starts the render thread, which reports to `mainWindow`. Throws Win32Error.
    Belvor(MainWindow& owner, HWND mainWindow);

    Session& session() noexcept { return core; }
    const Session& session() const noexcept { return core; }
    void setView(const ViewParameters& next) { core.setView(next); }
    /// Has the picture in `target` drawn: 0 the drawing area, 1 and 2 the plan and elevation panels.
    void redraw(HWND target, int which);

    Windows windows;

private:
    std::optional<ChosenFile> askFile(FileQuestion question) override { return questions.askFile(question); }
    SaveAnswer askToSave(const std::string& image) override { return questions.askToSave(image); }
    std::optional<ViewEdit> askView(const ViewParameters& view, const ModelPlace& place,
                                    const Units& units) override
    {
        return questions.askView(view, place, units);
    }
    void warn(const std::string& text) override;
    bool modalOpen() const override;
    void setStatus(const std::string& text) override;
    void setTitle(const std::string& title) override;
    void setRemark(const std::string& text) override;
    void showModel() override;
    void endDrags() override;
    void showMarkers(Thumbnail panel, const ViewMarkers& markers) override;
    void showEyeSlide(const EyeSlideRecord& record) override;
    void showLightMarker(const SphereMarker& marker) override;
    void removeLightMarker(std::size_t light) override;
    void showIntensity(std::size_t slider, int position) override;
    void imageSizeChanged() override;
    std::string fullPath(const std::string& path) override;
    void addRecent(const std::string& path) override;
    std::optional<std::string> recentFile(std::size_t index) override;
    void watchFile(const std::string& path, const FileStamp& stamp) override;
    std::optional<Canvas> canvas(Target target) override;
    void post(Target target, Handle<Request> request) override;
    void cancel(Target target) override;
    void showProperties() override { dialogs.showProperties(); }
    void showImageSizes() override { dialogs.showImageSize(); }
    void showAbout() override { dialogs.showAbout(); }
    void showHelp() override;
    void copyPicture() override;
    void settingsChanged() override;
    void toggleFullScreen() override;
    void leaveFullScreen() override;
    void toggleControls() override;

    HWND windowOf(Target target) const noexcept;

    MainWindow& frame;
    HWND mainWindow;
    Handle<RenderHost> host;
    Handle<RenderQueue> queue;
    Questions questions;
    Session core;
    Dialogs dialogs;
    std::optional<FileWatch> watch;   // of the model's file
};

}   // namespace belvor
