#pragma once

#include "imagefile/OmbrBuff.h"
#include "render/queue/RenderHost.h"
#include "render/queue/RenderRequest.h"
#include "view/SceneBuilder.h"

#include <cstdint>
#include <string>

namespace belvor {

/// A render into an Ombr file, closed when it is complete. The host hears how it ended.
class ImageRequest : public RenderRequest {
public:
    /// `file` is UTF-8; `number` is what the host calls the save by.
    ImageRequest(const std::string& file, std::uint32_t number, Handle<RenderHost> host, Handle<Model> drawn,
                 const Scene& scene, Handle<OmbrBuff> picture);
    /// Throws std::runtime_error with the file's name and the reason.
    void run(Reporter& progress) override;

private:
    const std::string path;
    const std::uint32_t save;
    Handle<RenderHost> receiver;
    Handle<OmbrBuff> sink;
};

}   // namespace belvor
