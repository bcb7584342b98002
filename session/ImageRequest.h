#pragma once

#include "render/queue/RenderHost.h"
#include "render/queue/RenderRequest.h"
#include "view/SceneBuilder.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <string>

namespace belvor {

/// The rows of an image file, and what completes the file after them.
struct ImageSink {
    Handle<Buffer> rows;
    std::function<void(Reporter&)> finish;
    LineTrace* trace = nullptr;   ///< Of a vector file, in `rows`: what its lines are made of.
};

/// Begins an image file (`path` is UTF-8) of the format that its ending says, an Ombr file for any other.
/// Throws OmbrFile::Error, FileError.
ImageSink beginImage(const std::string& path, const Handle<Model>& model, const Handle<Camera>& camera,
                     int width, int height);

/// A render into an image file, closed when it is complete. The host hears how it ended.
class ImageRequest : public RenderRequest {
public:
    /// `file` is UTF-8; `number` is what the host calls the save by.
    ImageRequest(const std::string& file, std::uint32_t number, Handle<RenderHost> host, Handle<Model> drawn,
                 const Scene& scene, ImageSink picture);
    /// Throws std::runtime_error with the file's name and the reason.
    void run(Reporter& progress) override;
    /// Has the run end soon, with the file as it was; too late once the picture is complete. Any thread.
    void stop() noexcept { stopped = true; }

private:
    const std::string path;
    const std::uint32_t save;
    Handle<RenderHost> receiver;
    std::function<void(Reporter&)> finish;
    std::atomic<bool> stopped{false};
};

}   // namespace belvor
