#pragma once

#include "errors/Reporter.h"
#include "render/Buffer.h"
#include "render/Frame.h"
#include "render/LineTrace.h"
#include "render/Outlines.h"
#include "scene/Model.h"
#include "view/SceneBuilder.h"
#include "view/ViewParameters.h"

namespace belvor {

/// Takes the rows of a render and keeps nothing.
class RowSink : public Buffer {
public:
    using Buffer::Buffer;
    void lineDone(int) override {}
};

inline void drawSmall(Model& model, const ViewParameters& view, const ModelPlace& place)
{
    SilentReporter silent;
    const Scene scene = buildScene(view, place, {32, 24}, 32, 24);
    RowSink rows(32);
    model.render(*scene.camera, *scene.lights, rows, silent);

    const Outlines outlines(model);
    LineTrace trace;
    LineStyle lines;
    lines.curves = lines.everyEdge = true;
    lines.outlines = &outlines;
    lines.width = 3;
    lines.trace = &trace;
    Frame frame;
    frame.render(model, *scene.camera, *scene.lights, rows, silent, lines);
    trace.forEachPath([](std::uint32_t, LineTrace::Path) {}, [] {});
}

/// Whatever a reader accepts must have bounds and must draw, with lines and without: from outside in
/// perspective, from the middle of the model, and in parallel projection.
inline void drawSmall(Model& model)
{
    ModelPlace place;
    model.bounds(place.centre, place.radius);
    ViewParameters views[3];
    views[0] = wholeModel(freshView(), {32, 24});
    views[1].eye = Point<3>(0.0, 0.0, 0.0);
    views[1].lookAt = Point<3>(0.3, 0.2, 0.1);
    views[2] = views[0];
    views[2].parallel = true;
    for (const ViewParameters& view : views) drawSmall(model, view, place);
}

}   // namespace belvor
