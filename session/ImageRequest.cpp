#include "session/ImageRequest.h"

#include "imagefile/OmbrBuff.h"
#include "imagefile/Pictures.h"
#include "platform/FileNames.h"
#include "resources/Texts.h"
#include "session/NamedFailure.h"

#include <utility>

namespace belvor {
namespace {

/// Passes reports on, and the wish to stop back, until `stopped` is such a wish too.
class StoppedBy : public Reporter {
public:
    StoppedBy(Reporter& receiver, const std::atomic<bool>& flag) : next(receiver), stopped(flag) {}
    bool progress(int stageCount, int stage, double fraction) override
    {
        return next.progress(stageCount, stage, fraction) || stopped;
    }

private:
    Reporter& next;
    const std::atomic<bool>& stopped;
};

}   // namespace

ImageSink beginImage(const std::string& path, const Handle<Model>& model, const Handle<Camera>& camera,
                     int width, int height)
{
    const PictureFormat format = pictureFormatOfPath(path).value_or(PictureFormat::ombr);
    if (format == PictureFormat::ombr) {
        const auto sink = makeHandle<OmbrBuff>(path, model, camera, width, height);
        return {sink, [sink](Reporter&) { sink->finish(); }, nullptr};
    }
    const std::vector<PictureTarget> targets{{path, format}};
    const auto sink = makeHandle<Pictures>(targets, *model, camera, width, height);
    return {sink,
            [sink](Reporter& progress) {
                sink->finish(progress);
                Pictures::commit({sink}, progress);
            },
            sink->trace()};
}

ImageRequest::ImageRequest(const std::string& file, std::uint32_t number, Handle<RenderHost> host,
                           Handle<Model> drawn, const Scene& scene, ImageSink picture)
    : RenderRequest(std::string(fileName(file)), std::move(drawn), scene.camera, scene.lights,
                    std::move(picture.rows)),
      path(file),
      save(number),
      receiver(std::move(host)),
      finish(std::move(picture.finish))
{}

void ImageRequest::run(Reporter& progress)
try {
    namingFile(path, [&] {
        StoppedBy reporter(progress, stopped);
        RenderRequest::run(reporter);
        if (stopped) throw Reporter::Abandoned();
        finish(reporter);
    });
    receiver->imageEnded(save, true);
} catch (...) {
    receiver->imageEnded(save, false);
    throw;
}

}   // namespace belvor
