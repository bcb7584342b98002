#include "render/queue/RenderRequest.h"

#include <utility>

namespace belvor {
namespace {

// "Preparing scene" and "Generating image".
constexpr int renderStageText = 587, renderStages = 2;

}   // namespace

RenderRequest::RenderRequest(std::string requestName, Handle<Model> scene, Handle<Camera> view,
                             Handle<LightSet> lights, Handle<Buffer> rows)
    : Request(std::move(requestName), renderStageText, renderStages),
      model(std::move(scene)),
      camera(std::move(view)),
      lighting(std::move(lights)),
      sink(std::move(rows))
{}

void RenderRequest::run(Reporter& progress) { model->render(*camera, *lighting, *sink, progress); }

}   // namespace belvor
