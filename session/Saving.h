#pragma once

#include "render/queue/RenderHost.h"
#include "scene/Model.h"
#include "session/ImageRequest.h"
#include "view/ViewParameters.h"

#include <cstdint>
#include <list>
#include <string>

namespace belvor {

class Session;
struct Picture;

/// The commands that write the image file or the view, and the question before a view is lost.
/// What is written is what was shown when the command was given: another model may arrive while
/// the user still chooses a name.
class Saving {
public:
    Saving(Session& owner, Handle<RenderHost> receiver);

    /// Asks whether to save a picture that is not saved yet. False: the user wants to go on
    /// with it, or the model in question has gone meanwhile.
    bool querySave();
    void save();
    void saveAs();
    void saveParameters();
    void loadParameters();
    /// A new model has no image file yet.
    void forgetName() noexcept { named = false; }

    /// The image file of save `number` is complete, or has failed and is as it was before.
    void imageEnded(std::uint32_t number, bool whole);
    /// Stops the writing of image files; their names keep the files that they have.
    void stop();
    /// Whether an image file is being written.
    bool running() const noexcept { return !writing.empty(); }

private:
    /// An image file that the render thread is to write.
    struct Save {
        std::uint32_t number;
        std::string file;
        Handle<Model> model;
        ViewParameters view;
        std::string nameBefore;   // the name of the model's image file before this save ...
        bool namedBefore;         // ... if it had one
        Handle<ImageRequest> request;
    };

    /// Whether `file` is that of the picture's model, of the one that is shown or of one that is being read,
    /// which what is written would destroy; the user is told.
    bool isModelFile(const Picture& picture, const std::string& file);
    bool write(const Picture& picture, const std::string& file);

    Session& session;
    Handle<RenderHost> host;
    std::list<Save> writing;
    std::uint32_t lastNumber = 0;
    std::string name;   // of the model's image file, once `named`; else the one chosen last, if any
    bool named = false;
};

}   // namespace belvor
