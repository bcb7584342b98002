#include "render/queue/LineDrawing.h"

namespace belvor {

void LineDrawing::render(const Model& model, const Camera& camera, const LightSet& lighting, Buffer& buffer,
                         Reporter& progress, const ShownLines& lines, LineTrace* trace)
{
    LineStyle style;
    style.curves = lines.curves;
    style.trace = trace;
    if (lines.edges) {
        if (!outlines) outlines.emplace(model, [&progress] { progress.check(2, 0, 0.0); });
        style.outlines = &*outlines;
    }
    frame.render(model, camera, lighting, buffer, progress, style);
}

}   // namespace belvor
