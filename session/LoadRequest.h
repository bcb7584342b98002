#pragma once

#include "account/Account.h"
#include "platform/FileStamp.h"
#include "readers/ModelFile.h"
#include "render/queue/RenderHost.h"
#include "render/queue/Request.h"

#include <atomic>
#include <cstdint>
#include <string>

namespace belvor {

/// What a load leaves besides the model. Written by the render thread before the model is handed over.
struct LoadResult : TSHandlable {
    Account account;
    FileStamp stamp;                  ///< Of the file, before it was read.
    std::string identity;             ///< The same; as fileIdentity().
    std::atomic<bool> ended{false};   ///< The load has run, well or not. Any thread.
};

/// Reads a model file and hands the model to the host.
class LoadRequest : public Request {
public:
    /// `path` is UTF-8; the host is told `number` with the model.
    LoadRequest(std::string path, FileType type, const ReadingOptions& options, std::uint32_t number,
                Handle<RenderHost> host, Handle<LoadResult> result);
    void run(Reporter& progress) override;

private:
    std::string path;
    FileType type;
    ReadingOptions options;
    std::uint32_t load;
    Handle<RenderHost> host;
    Handle<LoadResult> result;
};

}   // namespace belvor
