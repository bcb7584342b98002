#include "render/Frame.h"

#include "errors/Reporter.h"
#include "render/Buffer.h"
#include "scene/Camera.h"

#include <new>
#include <utility>

namespace belvor {

void Frame::render(const Model& model, const Camera& camera, const LightSet& lighting, Buffer& buffer,
                   Reporter& progress, const LineStyle& style)
{
    ended = false;
    project(model, camera, progress);
    edges.order(model, vertices, buffer.width(), static_cast<int>(camera.height), progress);
    shadeFacets(model, camera, lighting, shades, brightness, progress);
    buffer.setScene(model, shades);
    stepper.restart(model, vertices.points.data(), static_cast<int>(camera.height));
    if (style.any()) walkRowsWithLines(model, camera, buffer, progress, style);
    else walkRows(camera, buffer, progress);
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

void Frame::walkRows(const Camera& camera, Buffer& buffer, Reporter& progress)
{
    for (int y = 0; y < static_cast<int>(camera.height); ++y) {
        scanRow(y, camera, buffer, progress);
        buffer.lineDone(y);
    }
}

/// Fills the buffer with the surfaces of row `y`; the rows come in order.
void Frame::scanRow(int y, const Camera& camera, Buffer& buffer, Reporter& progress)
{
    progress.check(2, 1, static_cast<double>(y) / camera.height);
    buffer.clear();
    edges.smallFacets().forEach(y, [&buffer](const SpanFill& span) { buffer.fill(span); });
    buffer.scanFacets(stepper.row(y, edges.steppedFacets().at(y)), camera);
}

void Frame::collectLines(const Model& model, const Camera& camera, Buffer& buffer, const LineStyle& style)
{
    lines.collect(model, camera, vertices.points.data(), style, shades);
    if (shades.size() >= Buffer::noFacet) throw std::bad_alloc();   // owners have 32 bits
    buffer.setScene(model, shades);
    buffer.setLines(model.facetCount(), lines);
    lineStepper.restart(lines, buffer.width(), static_cast<int>(camera.height), style.width);
    for (LineRow& row : lineRows) row.clear(buffer.width());
    rowAbove.depths.resize(static_cast<std::size_t>(buffer.width()));
    rowAbove.owners.resize(static_cast<std::size_t>(buffer.width()));
}

/// Each row is delivered when the surfaces of the next one are known: a line between two rows
/// needs both.
void Frame::walkRowsWithLines(const Model& model, const Camera& camera, Buffer& buffer, Reporter& progress,
                              const LineStyle& style)
{
    collectLines(model, camera, buffer, style);
    const int height = static_cast<int>(camera.height);
    LineVisibility visibility(model, camera, style.outlines);
    for (int y = 0; y <= height; ++y) {
        SurfaceRow above, below;
        if (y > 0) above = {rowAbove.owners, rowAbove.depths};
        if (y < height) {
            scanRow(y, camera, buffer, progress);
            below = {buffer.owners(), buffer.depths()};
        }
        visibility.setRows(y - 1, above, below);
        lineRows[1].clear(buffer.width());
        lineStepper.step(y - 1, visibility, lineRows[0], lineRows[1]);
        buffer.exchange(rowAbove);
        if (y > 0) {
            buffer.addLines(lineRows[0], style.surfaces);
            buffer.lineDone(y - 1);
        }
        std::swap(lineRows[0], lineRows[1]);
    }
}

Extent<3> Frame::screenExtent() const noexcept
{
    Extent<3> extent = Extent<3>::nothing();
    for (const Point<3>& point : vertices.points) extent += point;
    return extent;
}

}   // namespace belvor
