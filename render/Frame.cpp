#include "render/Frame.h"

#include "errors/Reporter.h"
#include "render/Buffer.h"
#include "render/LinePainter.h"
#include "render/Pauses.h"
#include "render/Projection.h"
#include "render/ScreenCells.h"
#include "scene/Camera.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <utility>

namespace belvor {
namespace {

/// Asks the reporter whether to stop where that is not due by the rows, at most every few
/// milliseconds.
class Patience {
public:
    Patience(Reporter& reporter, std::chrono::milliseconds between) : progress(reporter), interval(between) {}

    void check(double fraction)
    {
        const auto now = std::chrono::steady_clock::now();
        if (now - last < interval) return;
        last = now;
        progress.check(2, 1, fraction);
    }

private:
    Reporter& progress;
    const std::chrono::milliseconds interval;
    std::chrono::steady_clock::time_point last = std::chrono::steady_clock::now();
};

}   // namespace

void Frame::render(const Model& model, const Camera& camera, const LightSet& lighting, Buffer& buffer,
                   Reporter& progress, const LineStyle& style)
{
    const int width = buffer.width(), height = static_cast<int>(camera.height);
    ended = false;
    project(model, camera, width, progress);
    bands = chooseBands(model, width, height, style);
    edges.order(model, vertices, bands, sharing, progress);
    shadeFacets(model, camera, lighting, shades, brightness, sharing, progress);
    if (style.draws()) collectLines(model, camera, buffer, style, progress);
    else buffer.setScene(model, shades);
    drawBands(model, camera, buffer, progress, style);
    ended = true;
}

void Frame::project(const Model& model, const Camera& camera, int width, Reporter& progress)
{
    constexpr std::size_t interval = 256;
    const std::size_t count = model.vertexCount();
    std::atomic<bool> allInFront = true;
    StageReport report(progress, interval);
    const auto fraction = [count](double vertex) { return vertex / (3.0 * static_cast<double>(count)); };
    const auto positionOf = [&model](std::uint32_t i) -> const Point<3>& { return model.vertex(i).position; };
    const ScreenCells cells(width, static_cast<int>(camera.height));
    const auto pause = [&progress] { progress.check(2, 0, 0.0); };
    resizeInSlices(vertices.points, count, pause);
    resizeInSlices(vertices.cells, count, pause);
    const auto projectPiece = [&](std::size_t first, std::size_t end, const Workers::Turn& turn) {
        bool inFront = true;
        CoordinateBlock block{};
        for (std::size_t i = first; i < end && !turn.stopping();) {
            if (turn.thread == 0) report.upTo(i + 1, fraction);
            const std::size_t blockEnd = std::min(end, i + CoordinateBlock::size);
            inFront &= projectPoints(camera, i, blockEnd, positionOf, vertices.points.data(), block);
            cells.find(block, blockEnd - i, &vertices.cells[i]);
            i = blockEnd;
        }
        if (!inFront) allInFront = false;
    };
    Workers::ofProcess().forPieces(
        sharing.threads, count, (sharing.pieceOf(count) + interval - 1) / interval * interval, projectPiece);
    report.upTo(count, fraction);
    vertices.allInFront = allInFront;
    vertices.hasCells = allInFront && ScreenCells::fit(width, static_cast<int>(camera.height));
}

/// Few enough rows that they stay in a processor's cache and every thread has several bands, enough
/// that facets reach into few. One thread where there is little work and others would come too late.
Bands Frame::chooseBands(const Model& model, int width, int height, const LineStyle& style) noexcept
{
    constexpr int mostBits = 6;
    const int cachedPixels = style.draws() ? 32768 : 65536;   // lines take as much memory again
    const double lineWork = style.draws() ? 16.0 * (model.curveCount() + model.facetCount()) : 0.0;
    const double work = static_cast<double>(width) * height + 16.0 * model.facetCount() + lineWork;
    drawingThreads = work <= 100.0 * static_cast<double>(sharing.pieceSize) ? 1 : sharing.threads;
    int rows = cachedPixels / width;
    if (drawingThreads > 1) rows = std::min(rows, height / static_cast<int>(4 * drawingThreads));
    int bits = 1;
    while (bits < mostBits && 2 << bits <= rows) ++bits;
    return {width, height, bits, style.draws() ? 1 : 0};
}

void Frame::collectLines(const Model& model, const Camera& camera, Buffer& buffer, const LineStyle& style,
                         Reporter& progress)
{
    Patience patience(progress, sharing.patience);
    lines.collect(model, camera, vertices.points.data(), style, shades.data(), bands, sharing,
                  [&patience] { patience.check(0.0); });
    buffer.setScene(model, shades);
    buffer.setLines(model.facetCount(), lines);
    if (style.trace) style.trace->restart(lines, style.width, drawingThreads);
}

/// Draws bands, each on any thread.
class Frame::BandPainter {
public:
    BandPainter(Frame& owner, const Model& drawn, const Camera& view, const Buffer& sink,
                const LineStyle& style)
        : frame(owner),
          model(drawn),
          camera(view),
          buffer(sink),
          drawsLines(style.draws()),
          lineWidth(static_cast<std::size_t>(style.width))
    {
        for (unsigned i = 0; drawsLines && i < frame.drawingThreads; ++i)
            linePainters.emplace_back(model, camera, frame.lines, style,
                                      style.trace ? style.trace->part(i) : nullptr);
    }

    void draw(std::size_t band, BandRows& rows, unsigned thread, Pauses& pauses)
    {
        drawSurfaces(band, rows.surfaces, thread, pauses);
        if (drawsLines) drawLines(band, rows, thread, pauses);
    }

private:
    /// Calls `take` with parts of a run, each of work for a few pauses at most where an item takes `steps` at
    /// most.
    template <class Item, class Take>
    static void inParts(const Item* items, std::size_t count, std::size_t steps, Pauses& pauses, Take take)
    {
        const std::size_t most = std::max<std::size_t>(4 * Pauses::interval / steps, 1);
        for (std::size_t part = 0; count > 0; items += part, count -= part) {
            part = std::min(count, most);
            pauses.step(part * steps);
            take(items, part);
        }
    }

    void drawSurfaces(std::size_t band, std::vector<PixelRow>& rows, unsigned thread, Pauses& pauses)
    {
        const Bands& picture = frame.bands;
        const auto [first, end] = picture.drawnRowsOf(band);
        if (rows.empty() || rows.front().width() != picture.width) rows.clear();
        while (rows.size() < static_cast<std::size_t>(end - first)) rows.emplace_back(picture.width);
        std::vector<FillRow> targets;
        for (PixelRow& row : rows) {
            row.clear();
            targets.push_back(row.target());
        }
        if (!buffer.needsRows(first, end)) return;
        const FillRows target{targets.data(), first, end, picture.width};
        const auto rowSteps = static_cast<std::size_t>(picture.width / 128 + 1);   // a facet's at most
        frame.edges.forEachRun(band, [&](const SimpleFacet* facets, std::size_t count) {
            inParts(facets, count, rowSteps * rows.size(), pauses,
                    [&](const SimpleFacet* part, std::size_t number) {
                        frame.sharing.fillFacets(part, number, &frame.vertices.points[0][0], target);
                    });
        });
        FacetStepper& stepper = frame.steppers[thread];
        const auto enter = [&stepper](std::uint32_t facet) { stepper.enter(facet); };
        stepper.restart(model, frame.vertices.points.data(), picture.height, pauses);
        frame.edges.forEachFromAbove(band, enter);
        for (int y = first; y < end; ++y) {
            pauses.step(rowSteps);
            frame.edges.forEachFacet(y, enter);
            rows[static_cast<std::size_t>(y - first)].scanFacets(stepper.row(y), model, camera, pauses);
        }
    }

    void drawLines(std::size_t band, BandRows& rows, unsigned thread, Pauses& pauses)
    {
        const Bands::Rows own = frame.bands.rowsOf(band);
        const auto rowCount = static_cast<std::size_t>(own.end - own.first);
        if (rows.lines.size() < rowCount) rows.lines.resize(rowCount);
        for (LineRow& row : rows.lines) row.clear(frame.bands.width);
        if (!buffer.needsRows(own.first, own.end)) return;
        LinePainter& painter = linePainters[thread];
        painter.setRows(own, rows.lines.data(), frame.bands.drawnRowsOf(band), rows.surfaces.data());
        const std::size_t longest = static_cast<std::size_t>(frame.bands.width) + rowCount;   // in pixels
        const auto draw = [&](const auto* items, std::size_t count, std::size_t mostPixels) {
            inParts(items, count, mostPixels * lineWidth / 4 + 1, pauses,
                    [&painter](const auto* part, std::size_t number) { painter.draw(part, number); });
        };
        frame.lines.forEachRun(
            band, [&](const LineSegment* segments, std::size_t count) { draw(segments, count, longest); },
            [&](const LinePixel* pixels, std::size_t count) { draw(pixels, count, 1); });
        painter.finish();
    }

    Frame& frame;
    const Model& model;
    const Camera& camera;
    const Buffer& buffer;
    const bool drawsLines;
    const std::size_t lineWidth;
    std::vector<LinePainter> linePainters;   // one a thread
};

/// The rows of all bands, by all threads; the buffer takes them in order.
void Frame::drawBands(const Model& model, const Camera& camera, Buffer& buffer, Reporter& progress,
                      const LineStyle& style)
{
    const std::size_t slotCount = drawingThreads == 1 ? 1 : std::min(2 * drawingThreads, drawingThreads + 8);
    steppers.resize(std::max<std::size_t>(steppers.size(), drawingThreads));
    slots.resize(std::max(slots.size(), slotCount));
    Patience patience(progress, sharing.patience);
    int taken = 0;
    BandPainter painter(*this, model, camera, buffer, style);
    const auto ask = [&] { patience.check(static_cast<double>(taken) / bands.height); };
    const auto drawBand = [&](std::size_t band, std::size_t slot, const Workers::Turn& turn) {
        Pauses pauses = pausesOf(turn, ask);
        painter.draw(band, slots[slot], turn.thread, pauses);
    };
    const auto takeBand = [&](std::size_t band, std::size_t slot) {
        const Bands::Rows own = bands.rowsOf(band);
        const int above = own.first - bands.drawnRowsOf(band).first;
        for (; taken < own.end; ++taken) {
            progress.check(2, 1, static_cast<double>(taken) / bands.height);
            const int row = taken - own.first;
            // The buffer's own row is the calling thread's: it is exchanged while others draw.
            buffer.exchange(slots[slot].surfaces[static_cast<std::size_t>(row + above)]);
            if (style.any()) buffer.surfacesDone(taken);
            if (!style.surfaces) buffer.removeSurfaces();
            if (style.draws()) buffer.addLines(slots[slot].lines[static_cast<std::size_t>(row)]);
            buffer.lineDone(taken);
        }
    };
    Workers::ofProcess().inOrder(drawingThreads, bands.count(), slotCount, drawBand, takeBand, ask);
}

Extent<3> Frame::screenExtent() const noexcept
{
    Extent<3> extent = Extent<3>::nothing();
    for (const Point<3>& point : vertices.points) extent += point;
    return extent;
}

}   // namespace belvor
