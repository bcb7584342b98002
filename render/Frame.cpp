#include "render/Frame.h"

#include "errors/Reporter.h"
#include "render/Buffer.h"
#include "scene/Camera.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <new>
#include <utility>

namespace belvor {
namespace {

/// Asks the reporter whether to stop where that is not due by the rows, at most every few
/// milliseconds.
class Patience {
public:
    explicit Patience(Reporter& reporter) : progress(reporter) {}

    void check(double fraction)
    {
        const auto now = std::chrono::steady_clock::now();
        if (now - last < std::chrono::milliseconds(10)) return;
        last = now;
        progress.check(2, 1, fraction);
    }

private:
    Reporter& progress;
    std::chrono::steady_clock::time_point last = std::chrono::steady_clock::now();
};

}   // namespace

void Frame::render(const Model& model, const Camera& camera, const LightSet& lighting, Buffer& buffer,
                   Reporter& progress, const LineStyle& style)
{
    const int width = buffer.width(), height = static_cast<int>(camera.height);
    ended = false;
    project(model, camera, progress);
    bandRows = rowsPerBand(model, width, height);
    edges.order(model, vertices, width, height, bandRows, sharing, progress);
    shadeFacets(model, camera, lighting, shades, brightness, sharing, progress);
    buffer.setScene(model, shades);
    if (style.any()) walkRowsWithLines(model, camera, buffer, progress, style);
    else scanRows(model, camera, buffer, progress, [&buffer](int y) { buffer.lineDone(y); });
    ended = true;
}

void Frame::project(const Model& model, const Camera& camera, Reporter& progress)
{
    constexpr std::size_t interval = 256;
    const std::size_t count = model.vertexCount();
    std::atomic<bool> allInFront = true;
    StageReport report(progress, interval);
    const auto fraction = [count](double vertex) { return vertex / (3.0 * static_cast<double>(count)); };
    vertices.points.resize(count);
    const auto projectPiece = [&](std::size_t first, std::size_t end, const Workers::Turn& turn) {
        bool inFront = true;
        for (std::size_t i = first; i < end && !turn.stopping();) {
            if (turn.thread == 0) report.upTo(i + 1, fraction);
            for (const std::size_t pause = std::min(end, i + interval); i < pause; ++i) {
                const Point<3> projected =
                    camera.project(model.vertex(static_cast<std::uint32_t>(i)).position);
                vertices.points[i] = projected;
                inFront &= projected[0] == projected[0] && projected[1] == projected[1] && projected[2] < 0.0;
            }
        }
        if (!inFront) allInFront = false;
    };
    Workers::ofProcess().forPieces(sharing.threads, count,
                                   (sharing.pieceSize + interval - 1) / interval * interval, projectPiece);
    report.upTo(count, fraction);
    vertices.allInFront = allInFront;
}

/// Few enough that finished rows stay in a processor's cache and every thread has several bands,
/// enough that entering the facets of a band costs little. All rows of a picture of little work,
/// where other threads would come too late.
int Frame::rowsPerBand(const Model& model, int width, int height) const noexcept
{
    constexpr int most = 16, least = 2, cachedPixels = 65536;
    const double work = static_cast<double>(width) * height + 16.0 * model.facetCount();
    if (sharing.threads <= 1 || work <= 100.0 * static_cast<double>(sharing.pieceSize))
        return std::max(height, 1);
    const int even = height / static_cast<int>(4 * sharing.threads);
    return std::clamp(std::min(even, cachedPixels / width), least, most);
}

/// The surfaces of all rows, one after the other.
void Frame::scanRows(const Model& model, const Camera& camera, Buffer& buffer, Reporter& progress,
                     const RowTaker& take)
{
    const int height = static_cast<int>(camera.height);
    if (bandRows < height) {
        scanBands(model, camera, buffer, progress, take);
        return;
    }
    if (steppers.empty()) steppers.resize(1);
    FacetStepper& stepper = steppers.front();
    stepper.restart(model, vertices.points.data(), height);
    for (int y = 0; y < height; ++y) {
        progress.check(2, 1, static_cast<double>(y) / height);
        buffer.clear();
        edges.forEachSpan(y, [&buffer](const SpanFill& span) { buffer.fill(span); });
        edges.forEachFacet(y, [&stepper](std::uint32_t facet) { stepper.enter(facet); });
        buffer.scanFacets(stepper.row(y), camera);
        take(y);
    }
}

/// Bands of rows by all threads; the buffer takes their rows in order.
void Frame::scanBands(const Model& model, const Camera& camera, Buffer& buffer, Reporter& progress,
                      const RowTaker& take)
{
    // The buffer itself is the calling thread's: its row is exchanged while others draw.
    const int width = buffer.width(), height = static_cast<int>(camera.height);
    const std::size_t slots = std::min(2 * sharing.threads, sharing.threads + 8);
    steppers.resize(std::max<std::size_t>(steppers.size(), sharing.threads));
    bands.resize(std::max(bands.size(), slots));
    Patience patience(progress);
    int taken = 0;
    const auto drawBand = [&](std::size_t index, std::size_t slot, const Workers::Turn& turn) {
        const int first = static_cast<int>(index) * bandRows, end = std::min(first + bandRows, height);
        std::vector<PixelRow>& rows = bands[slot];
        if (rows.empty() || rows.front().width() != width) rows.clear();
        while (rows.size() < static_cast<std::size_t>(end - first)) rows.emplace_back(width);
        FacetStepper& stepper = steppers[turn.thread];
        stepper.restart(model, vertices.points.data(), height);
        for (int y = first; y < end && !turn.stopping(); ++y) {
            if (turn.thread == 0) patience.check(static_cast<double>(taken) / height);
            PixelRow& row = rows[static_cast<std::size_t>(y - first)];
            row.clear();
            edges.forEachSpan(y, [&row](const SpanFill& span) { row.fill(span); });
            edges.forEachFacet(y, [&stepper](std::uint32_t facet) { stepper.enter(facet); });
            row.scanFacets(stepper.row(y), model, camera);
        }
    };
    const auto takeBand = [&](std::size_t index, std::size_t slot) {
        const int end = std::min((static_cast<int>(index) + 1) * bandRows, height);
        for (std::size_t i = 0; taken < end; ++i, ++taken) {
            progress.check(2, 1, static_cast<double>(taken) / height);
            buffer.exchange(bands[slot][i]);
            take(taken);
        }
    };
    const auto bandCount = static_cast<std::size_t>((height + bandRows - 1) / bandRows);
    Workers::ofProcess().inOrder(sharing.threads, bandCount, slots, drawBand, takeBand);
}

void Frame::collectLines(const Model& model, const Camera& camera, Buffer& buffer, const LineStyle& style)
{
    lines.collect(model, camera, vertices.points.data(), style, shades);
    if (shades.size() >= Buffer::noFacet) throw std::bad_alloc();   // owners have 32 bits
    buffer.setScene(model, shades);
    buffer.setLines(model.facetCount(), lines);
    lineStepper.restart(lines, buffer.width(), static_cast<int>(camera.height), style.width);
    for (LineRow& row : lineRows) row.clear(buffer.width());
    if (rowAbove.width() != buffer.width()) rowAbove = PixelRow(buffer.width());
}

/// Each row is delivered when the surfaces of the next one are known: a line between two rows
/// needs both.
void Frame::walkRowsWithLines(const Model& model, const Camera& camera, Buffer& buffer, Reporter& progress,
                              const LineStyle& style)
{
    collectLines(model, camera, buffer, style);
    const int height = static_cast<int>(camera.height);
    LineVisibility visibility(model, camera, lines, style.outlines);
    const auto step = [&](int y, const SurfaceRow& below) {
        SurfaceRow above;
        if (y > 0) above = {rowAbove.owners, rowAbove.depths};
        visibility.setRows(y - 1, above, below);
        lineRows[1].clear(buffer.width());
        lineStepper.step(y - 1, visibility, lineRows[0], lineRows[1]);
        buffer.exchange(rowAbove);
        if (y > 0) {
            buffer.addLines(lineRows[0], style.surfaces);
            buffer.lineDone(y - 1);
        }
        std::swap(lineRows[0], lineRows[1]);
    };
    scanRows(model, camera, buffer, progress, [&](int y) { step(y, {buffer.owners(), buffer.depths()}); });
    step(height, {});
}

Extent<3> Frame::screenExtent() const noexcept
{
    Extent<3> extent = Extent<3>::nothing();
    for (const Point<3>& point : vertices.points) extent += point;
    return extent;
}

}   // namespace belvor
