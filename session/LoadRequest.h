#pragma once

#include "readers/ModelFile.h"
#include "render/queue/RenderHost.h"
#include "render/queue/Request.h"

#include <string>

namespace belvor {

/// Reads a model file and hands the model to the host.
class LoadRequest : public Request {
public:
    /// `path` is UTF-8.
    LoadRequest(std::string path, FileType type, Handle<RenderHost> host);
    void run(Reporter& progress) override;

private:
    std::string path;
    FileType type;
    Handle<RenderHost> host;
};

}   // namespace belvor
