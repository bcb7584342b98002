#pragma once

#include "readers/ModelFile.h"
#include "render/queue/RenderHost.h"
#include "render/queue/Request.h"

#include <cstdint>
#include <string>

namespace belvor {

/// Reads a model file and hands the model to the host.
class LoadRequest : public Request {
public:
    /// `path` is UTF-8; the host is told `number` with the model.
    LoadRequest(std::string path, FileType type, std::uint32_t number, Handle<RenderHost> host);
    void run(Reporter& progress) override;

private:
    std::string path;
    FileType type;
    std::uint32_t load;
    Handle<RenderHost> host;
};

}   // namespace belvor
