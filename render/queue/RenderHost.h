#pragma once

#include "platform/Handle.h"

#include <cstdint>
#include <string>

namespace belvor {

class BadFile;
class Model;
class Progress;

/// Where the render thread's reports go. Every operation is called on the render thread
/// while it holds no lock, so each may wait until the interface thread has answered.
class RenderHost : public TSHandlable {
public:
    /// `progress` has news and no update is pending: the host is to call its
    /// updatePending() at once and updateDone() when it has shown them.
    virtual void progressMade(Progress& progress) = 0;
    /// The run of `progress` is over and what the host shows of it must go before the
    /// call returns: the object may be deleted then.
    virtual void progressEnded(const Progress& progress) noexcept = 0;
    /// Load `number` has read `model` (null for a file of no known type). The host takes
    /// its own handle before it returns.
    virtual void modelLoaded(std::uint32_t number, Model* model) = 0;
    /// The image file of save `number` is complete; or it has failed, and the reason follows.
    virtual void imageEnded(std::uint32_t, bool) {}
    /// The thread does nothing any more but let go of this host. Throws when that cannot be told.
    virtual void threadEnded() = 0;
    /// Shows the user a fault in a model file.
    virtual void showBadFile(const BadFile& fault) = 0;
    /// Shows the user why a run failed.
    virtual void warning(const std::string& text) = 0;
};

}   // namespace belvor
