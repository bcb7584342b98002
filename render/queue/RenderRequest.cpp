#include "render/queue/RenderRequest.h"

#include <utility>

namespace belvor {
namespace {

constexpr int renderStages = 2;   // "Preparing scene" and "Generating image"

}   // namespace

RenderRequest::RenderRequest(std::string requestName, Handle<Model> scene, Handle<Camera> view,
                             Handle<LightSet> lights, Handle<Buffer> rows)
    : Request(std::move(requestName), Text::preparingStage, renderStages),
      model(std::move(scene)),
      camera(std::move(view)),
      lighting(std::move(lights)),
      sink(std::move(rows))
{}

void RenderRequest::drawLines(const ShownLines& lines, Handle<LineDrawing> drawing, LineTrace* trace)
{
    shown = lines;
    lineTrace = trace;
    lineDrawing = std::move(drawing);
}

void RenderRequest::run(Reporter& progress)
{
    if (shown.any()) lineDrawing->render(*model, *camera, *lighting, *sink, progress, shown, lineTrace);
    else model->render(*camera, *lighting, *sink, progress);
}

}   // namespace belvor
