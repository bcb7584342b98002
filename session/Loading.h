#pragma once

#include "readers/ModelFile.h"
#include "render/queue/RenderHost.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace belvor {

class Session;

/// A load, from the first question to the window's title: the dialog, the files opened last, the
/// command line, a dropped file.
class Loading {
public:
    Loading(Session& owner, Handle<RenderHost> receiver);

    void openModel();
    /// Entry `index` of the files opened last.
    void openRecent(std::size_t index);
    /// Any path; after the question whether to save. Nothing happens while a box is open.
    void openFile(const std::string& path);

    /// Stops a load that is going on: the model stays.
    void giveUp();
    /// The reader of load `number` has made `model`; null: no model. Only the load that was asked
    /// for last counts, and that not when it has been given up.
    void modelLoaded(std::uint32_t number, Model* model);

private:
    void loadFile(const std::string& path, FileType type);

    Session& session;
    Handle<RenderHost> host;
    std::string pending;   // the file that was asked for last; empty when that load is over
    std::uint32_t lastNumber = 0;
};

}   // namespace belvor
