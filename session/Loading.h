#pragma once

#include "account/Account.h"
#include "platform/FileStamp.h"
#include "readers/ModelFile.h"
#include "render/queue/RenderHost.h"
#include "session/LoadRequest.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace belvor {

class Session;

/// A load, from the first question to the window's title: the dialog, the files opened last, the
/// command line, a dropped file, the shown file once more.
class Loading {
public:
    Loading(Session& owner, Handle<RenderHost> receiver);

    void openModel();
    /// Entry `index` of the files opened last.
    void openRecent(std::size_t index);
    /// Any path; after the question whether to save. Nothing happens while a box is open.
    void openFile(const std::string& path);
    /// Reads the shown model's file again; the view and the units stay.
    void reload();
    /// The rules for drawings from here on; a drawing that is shown is read again by them.
    void readBy(ReadingRules rules);
    ReadingRules rules() const noexcept { return reading.rules; }
    /// Whether lines and curves are read from here on; a drawing that is shown is read again.
    void readCurves(bool wanted);

    /// Whether a file is being read or about to be.
    bool running() const noexcept { return !pending.empty() && result && !result->ended; }
    /// Its path, empty without one.
    std::string fileBeingRead() const { return running() ? pending : std::string(); }
    /// Stops a load that is going on: the model stays.
    void giveUp();
    /// The reader of load `number` has made `model`; null: no model. Only the load that was asked
    /// for last counts, and that not when it has been given up.
    void modelLoaded(std::uint32_t number, Model* model);

    /// The user has read in a box why the file of a load is refused, which is in the status bar too: adds
    /// there that the other rules may read it.
    void refused(const std::string& why);

    /// Says in the status bar what was not drawn of the shown model's file.
    void tellRemark();

    /// What the reader met in the shown model's file.
    const Account& account() const noexcept { return accountOfModel; }
    /// The shown model's file as it was before it was read.
    const FileStamp& stamp() const noexcept { return stampOfModel; }
    /// Whether `path` (UTF-8) is the shown model's file, also by a new name that was given to it since.
    bool isModelFile(const std::string& path) const;

private:
    void loadFile(const std::string& path, FileType kind);
    void post(const std::string& path, FileType kind, bool again);
    void readAgain();

    Session& session;
    Handle<RenderHost> host;
    ReadingOptions reading;

    // The load that was asked for last.
    std::string pending;   // its file; empty when it is over
    std::uint32_t lastNumber = 0;
    FileType pendingType = FileType::unknown;
    bool rereads = false;   // the shown model's file
    ReadingOptions pendingReading;
    Handle<LoadResult> result;

    // The shown model.
    FileType type = FileType::unknown;
    Account accountOfModel;
    FileStamp stampOfModel;
    std::string identityOfModel;
    ReadingOptions readingOfModel;
};

}   // namespace belvor
