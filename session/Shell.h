#pragma once

#include "platform/FileStamp.h"
#include "platform/Handle.h"
#include "render/Buffer.h"
#include "render/queue/Request.h"
#include "scene/Model.h"
#include "view/PanelRecords.h"
#include "view/SceneBuilder.h"
#include "view/ViewParameters.h"

#include <functional>
#include <optional>
#include <string>

namespace belvor {

/// What a request is for. A newer request takes the place of an older one for the same target,
/// except for image, where every one is carried out.
enum class Target { mainWindow, display, plan, elevation, image };

/// A file that the session asks the user for.
enum class FileQuestion { openModel, image, loadParameters, saveParameters };
struct ChosenFile {
    std::string path;   ///< Full, UTF-8.
    unsigned filter;    ///< The number of the filter in the question's list, from 1.
};

enum class SaveAnswer { yes, no, cancel };

/// What a user typed into a form, to be applied to the view that is current then.
using ViewEdit = std::function<ViewParameters(const ViewParameters&)>;

/// Where a render goes, of `width` × `height` pixels, each at least 1.
struct Canvas {
    Handle<Buffer> sink;
    int width, height;
};

/// What a session needs of its surroundings: windows, or a test that plays them. Texts and paths
/// are UTF-8. Called on the interface thread only. Any operation may enter the session again
/// before it returns; the questions serve every message until the user has answered.
class Shell {
public:
    // Questions.
    virtual std::optional<ChosenFile> askFile(FileQuestion question) = 0;
    /// Whether to save the picture, for which `image` is the file's name, empty when there is none yet.
    virtual SaveAnswer askToSave(const std::string& image) = 0;
    /// None when the form was cancelled.
    virtual std::optional<ViewEdit> askView(const ViewParameters& view, const ModelPlace& place,
                                            const Units& units) = 0;
    /// Shows a box; returns when it is closed.
    virtual void warn(const std::string& text) = 0;
    /// Whether a question or box is open, which must be answered before the next command.
    virtual bool modalOpen() const = 0;

    // What is shown.
    virtual void setStatus(const std::string& text) = 0;
    virtual void setTitle(const std::string& title) = 0;
    /// What the status bar shows while no request runs, until the next remark; empty for nothing.
    virtual void setRemark(const std::string& text) = 0;
    /// Another model has been loaded: commands are available, open dialogs show it.
    virtual void showModel() = 0;
    /// A drag that is going on ends without a request.
    virtual void endDrags() = 0;
    virtual void showMarkers(Thumbnail panel, const ViewMarkers& markers) = 0;
    virtual void showEyeSlide(const EyeSlideRecord& record) = 0;
    virtual void showLightMarker(const SphereMarker& marker) = 0;
    virtual void removeLightMarker(std::size_t light) = 0;
    virtual void showIntensity(std::size_t slider, int position) = 0;
    /// The picture has another size: the drawing area takes its proportions.
    virtual void imageSizeChanged() = 0;

    // Files.
    /// The absolute form of a path. Throws Win32Error.
    virtual std::string fullPath(const std::string& path) = 0;
    /// Puts a file to the front of those opened last.
    virtual void addRecent(const std::string& path) = 0;
    /// Entry `index` of them; none when there are fewer.
    virtual std::optional<std::string> recentFile(std::size_t index) = 0;

    /// Has fileChanged() called once the file `path` no longer has `stamp`; ends the former watch.
    virtual void watchFile(const std::string& path, const FileStamp& stamp) = 0;

    // Requests, for the render thread.
    /// Where to draw for `target`, one of the three that show something; none when it cannot show
    /// anything now. Throws Win32Error.
    virtual std::optional<Canvas> canvas(Target target) = 0;
    virtual void post(Target target, Handle<Request> request) = 0;
    /// Gives up what waits or runs for `target`.
    virtual void cancel(Target target) = 0;

    // Commands that concern windows only.
    virtual void showProperties() = 0;
    virtual void showImageSizes() = 0;
    virtual void showAbout() = 0;
    virtual void showHelp() = 0;
    /// Copies the picture in the drawing area to the clipboard.
    virtual void copyPicture() = 0;
    /// The checked items of the menus have changed: they are shown and kept for the next start.
    virtual void settingsChanged() = 0;
    virtual void toggleFullScreen() = 0;
    virtual void leaveFullScreen() = 0;
    virtual void toggleControls() = 0;

protected:
    ~Shell() = default;
};

}   // namespace belvor
