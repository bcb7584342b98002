#pragma once

#include "render/queue/LineDrawing.h"
#include "render/queue/RenderHost.h"
#include "resources/Texts.h"
#include "scene/Model.h"
#include "session/Loading.h"
#include "session/Saving.h"
#include "session/Shell.h"
#include "view/SceneBuilder.h"
#include "view/StandardViews.h"
#include "view/ViewGestures.h"
#include "view/ViewHistory.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace belvor {

/// What a picture is of. A copy of it stays true whatever is loaded or changed meanwhile.
struct Picture {
    Handle<Model> model;
    ModelPlace place;
    ViewParameters view;
    ImageSize size;
    ShownLines lines;
    Handle<LineDrawing> lineDrawing;   // of the model
    std::string modelPath;
};

/// The loaded model and the views of it, and every decision about them that needs no window.
/// Interface thread; may be entered again from within any call of the shell.
class Session {
public:
    /// `host` hears of what the requests lead to. Both outlive the session.
    Session(Shell& shell, Handle<RenderHost> host);
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    // The view.
    /// The only way a view is changed: the present view becomes the previous one, `next` is
    /// drawn, and every panel is told. Nothing happens for an equal view, or one that is not finite.
    void setView(const ViewParameters& next) { setView(next, joined); }
    /// The same for a step of a gesture: the view before it stays the previous one to its end.
    void setView(const ViewParameters& next, std::uint32_t gesture);
    /// The changes from here on are one, as in a gesture, until it is called with false.
    void joinChanges(bool begin) noexcept;
    void previousView() { setView(history.previous()); }
    void undoView();
    void redoView();
    bool canUndo() const noexcept { return history.canUndo(); }
    bool canRedo() const noexcept { return history.canRedo(); }
    void wholeModel();
    void increaseZoomAngle();
    void centreLookAt();
    void standardView(StandardView which);
    /// Asks for the view's numbers.
    void askView();
    const ViewParameters& view() const noexcept { return history.current(); }
    /// Has the picture in one of the three windows drawn.
    void redraw(Target target);

    // What the panels ask for. Nothing happens without a model.
    void moveMarkers(Thumbnail panel, const ViewMarkers& asked);
    void moveAlongSight(const EyeSlideRecord& asked);
    void turn(const SphereMarker& asked);
    void removeLight(std::size_t light);
    /// The point of the drawing area that was clicked becomes the look-at point.
    void lookAtPixel(int x, int y);
    void zoomBy(double factor);
    void gesture(const ViewGesture& step);
    void setIntensity(std::size_t slider, int position);
    /// Each at least 1.
    void setImageSize(const ImageSize& size);
    void setUnits(const Units& units);

    // The model.
    const Handle<Model>& model() const noexcept { return held; }
    /// The full path of the model's file; empty without a model.
    const std::string& modelPath() const noexcept { return path; }
    const ModelPlace& place() const noexcept { return where; }
    const ImageSize& imageSize() const noexcept { return image; }
    /// What the image file would show now.
    Picture picture() const { return {held, where, history.current(), image, lines, lineDrawing, path}; }
    /// Which lines the picture shows. Another picture is not saved.
    void showLines(const ShownLines& shown);
    const ShownLines& shownLines() const noexcept { return lines; }
    /// Takes `loaded`, read from the full path `file`, and shows the whole of it. With `again` it is a new
    /// reading of the shown model's file: units that the user set are kept, and the view too, unless there
    /// was nothing to see before.
    void takeModel(Handle<Model> loaded, const std::string& file, bool again = false);
    /// The file of the model is another than when it was read.
    void fileChanged();

    /// Stops what goes on: a load, else the writing of an image file; or leaves full screen.
    void stop();

    // The end.
    /// Ends the program, unless the user wants to save first.
    void close();
    /// The system wants to end the program: why it must wait, or Text::none. Asks whether to save
    /// a picture that is not saved.
    Text reasonToStay();
    /// Whether the program is ending: then no request is posted.
    bool closing() const noexcept { return ending; }

    /// A picture of the model could not be saved: a load or an exit that was requested because it
    /// counted as saved is cancelled.
    void stay();

    Shell& shell() noexcept { return surroundings; }
    Loading& loading() noexcept { return loads; }
    const Loading& loading() const noexcept { return loads; }
    Saving& saving() noexcept { return saves; }
    const Saving& saving() const noexcept { return saves; }

private:
    friend class Saving;   // marks views as saved
    void showView();
    void apply(const ViewParameters& next);

    Shell& surroundings;
    Handle<Model> held;
    std::string path;
    bool changed = false;              // the model's file, since it was read
    bool seen = false;                 // some reading of the model's file had something to see
    std::optional<Units> givenUnits;   // by the user, to the model
    ModelPlace where;
    ImageSize image;
    ViewHistory history;
    ShownLines lines;
    Handle<LineDrawing> lineDrawing;   // of the model
    Scene scene;                       // as the drawing area was last drawn
    std::uint32_t joined = 0;          // their gesture's number; 0: each change is by itself
    std::uint32_t lastJoined = 0;
    bool ending = false;
    Saving saves;
    Loading loads;
};

}   // namespace belvor
