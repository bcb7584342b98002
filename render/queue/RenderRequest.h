#pragma once

#include "render/Buffer.h"
#include "render/queue/LineDrawing.h"
#include "render/queue/Request.h"
#include "scene/Camera.h"
#include "scene/Light.h"
#include "scene/Model.h"

namespace belvor {

/// A render of a model into a sink, of which it keeps handles until it has run.
class RenderRequest : public Request {
public:
    RenderRequest(std::string name, Handle<Model> model, Handle<Camera> camera, Handle<LightSet> lighting,
                  Handle<Buffer> sink);
    /// The same with lines; `drawing` belongs to the model, `trace` to the sink.
    void drawLines(const ShownLines& lines, Handle<LineDrawing> drawing, LineTrace* trace = nullptr);
    void run(Reporter& progress) override;

private:
    Handle<Model> model;
    Handle<Camera> camera;
    Handle<LightSet> lighting;
    Handle<Buffer> sink;
    ShownLines shown;
    Handle<LineDrawing> lineDrawing;
    LineTrace* lineTrace = nullptr;
};

}   // namespace belvor
