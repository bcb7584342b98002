#pragma once

#include "imagefile/OmbrBuff.h"
#include "render/queue/RenderRequest.h"

#include <string>
#include <utility>

namespace belvor {

/// A render into an Ombr file, closed when it is complete.
class ImageRequest : public RenderRequest {
public:
    ImageRequest(std::string file, Handle<Model> scene, Handle<Camera> view, Handle<LightSet> lights,
                 Handle<OmbrBuff> rows)
        : RenderRequest(std::move(file), std::move(scene), std::move(view), std::move(lights), rows),
          picture(std::move(rows))
    {}
    void run(Reporter& progress) override
    {
        RenderRequest::run(progress);
        picture->finish();
    }

private:
    Handle<OmbrBuff> picture;
};

}   // namespace belvor
