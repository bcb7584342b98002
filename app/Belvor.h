#pragma once

#include "platform/win32/Windows.h"
#include "readers/ModelFile.h"
#include "render/queue/RenderHost.h"
#include "render/queue/RenderQueue.h"
#include "scene/Model.h"
#include "view/SceneBuilder.h"
#include "view/ViewHistory.h"

#include <string>

namespace belvor {

/// The loaded model, the views of it and the render thread that draws them. Interface thread.
class Belvor {
public:
    /// Where views are shown; null as long as a window does not exist or has not been heard of.
    struct Windows {
        HWND display = nullptr, controls = nullptr;
        HWND plan = nullptr, elevation = nullptr, eyeSlide = nullptr, sphere = nullptr;
    };

    /// Starts the render thread, which reports to `mainWindow`. Throws Win32Error.
    explicit Belvor(HWND mainWindow);
    Belvor(const Belvor&) = delete;
    Belvor& operator=(const Belvor&) = delete;

    /// The only way a view is changed: the present view becomes the previous one, `next` is
    /// drawn, and every panel is told. Nothing happens for an equal view.
    void setView(const ViewParameters& next);
    /// The same for a step of a gesture: the view before it stays the previous one to its end.
    void setView(const ViewParameters& next, std::uint32_t gesture);
    void previousView() { setView(history.previous()); }
    const ViewParameters& view() const noexcept { return history.current(); }
    /// Has the picture in `target` drawn: 0 the drawing area, 1 and 2 the plan and elevation panels.
    void redraw(HWND target, int which);

    /// Takes `loaded`, read from the full path `path`, and shows the whole of it.
    void takeModel(Handle<Model> loaded, std::string path);
    const Handle<Model>& model() const noexcept { return held; }
    /// The full path of the model's file, UTF-8; empty without a model.
    const std::string& modelPath() const noexcept { return path; }
    const ModelPlace& place() const noexcept { return where; }
    /// The camera that the drawing area was last drawn with; none before.
    const Handle<Camera>& camera() const noexcept { return scene.camera; }

    /// Queues the picture for the image file `file` (UTF-8), and counts the view as saved.
    /// Throws OmbrFile::Error when the file cannot be begun.
    void writeImage(const std::string& file);
    /// Queues the reading of a model file; an older reading is given up.
    void load(const std::string& file, FileType type);
    /// Gives up what is drawn or read for a window, and has the render thread end after what
    /// is left. From here on nothing is queued.
    void shutDown();
    bool closing() const noexcept { return ending; }

    Windows windows;
    ImageSize image;   ///< Of the picture in the image file.

private:
    void showView();

    HWND mainWindow;
    Handle<RenderHost> host;
    Handle<RenderQueue> queue;
    Handle<Model> held;
    std::string path;
    ModelPlace where;
    ViewHistory history;
    Scene scene;
    bool ending = false;
};

}   // namespace belvor
