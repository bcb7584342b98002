#include "render/Frame.h"

#include "errors/Reporter.h"
#include "render/Buffer.h"
#include "scene/Camera.h"

namespace belvor {

void Frame::render(const Model& model, const Camera& camera, const LightSet& lighting, Buffer& buffer,
                   Reporter& progress)
{
    ended = false;
    project(model, camera, progress);
    edges.order(model, vertices, buffer.width(), static_cast<int>(camera.height), progress);
    shadeFacets(model, camera, lighting, shades, brightness, progress);
    walkRows(model, camera, buffer, progress);
    ended = true;
}

void Frame::project(const Model& model, const Camera& camera, Reporter& progress)
{
    const std::uint32_t count = model.vertexCount();
    bool allInFront = true;
    vertices.points.resize(count);
    for (std::uint32_t i = 0; i < count; ++i) {
        if (i % 256 == 0) progress.check(2, 0, i / (3.0 * count));
        const Point<3> projected = camera.project(model.vertex(i).position);
        vertices.points[i] = projected;
        allInFront &= projected[0] == projected[0] && projected[1] == projected[1] && projected[2] < 0.0;
    }
    vertices.allInFront = allInFront;
}

void Frame::walkRows(const Model& model, const Camera& camera, Buffer& buffer, Reporter& progress)
{
    const int height = static_cast<int>(camera.height);
    buffer.setScene(model, shades);
    stepper.restart(model, vertices.points.data(), height);
    for (int y = 0; y < height; ++y) {
        progress.check(2, 1, static_cast<double>(y) / height);
        buffer.clear();
        edges.smallFacets().forEach(y, [&buffer](const SpanFill& span) { buffer.fill(span); });
        buffer.scanFacets(stepper.row(y, edges.steppedFacets().at(y)), camera);
        buffer.lineDone(y);
    }
}

Extent<3> Frame::screenExtent() const noexcept
{
    Extent<3> extent = Extent<3>::nothing();
    for (const Point<3>& point : vertices.points) extent += point;
    return extent;
}

}   // namespace belvor
