#include "session/ImageRequest.h"

#include "platform/FileNames.h"
#include "resources/Texts.h"
#include "session/NamedFailure.h"

#include <utility>

namespace belvor {

ImageRequest::ImageRequest(const std::string& file, std::uint32_t number, Handle<RenderHost> host,
                           Handle<Model> drawn, const Scene& scene, Handle<OmbrBuff> picture)
    : RenderRequest(std::string(fileName(file)), std::move(drawn), scene.camera, scene.lights, picture),
      path(file),
      save(number),
      receiver(std::move(host)),
      sink(std::move(picture))
{}

void ImageRequest::run(Reporter& progress)
try {
    namingFile(path, [&] {
        RenderRequest::run(progress);
        sink->finish();
    });
    receiver->imageEnded(save, true);
} catch (...) {
    receiver->imageEnded(save, false);
    throw;
}

}   // namespace belvor
