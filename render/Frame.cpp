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

/// Projects the vertices `first` to `end` − 1, at most a block of them. Whether all are numbers and lie in
/// front of the eye.
bool projectBlock(const Model& model, const Camera& camera, std::size_t first, std::size_t end,
                  Point<3>* projected)
{
    CoordinateBlock block{};
    const std::size_t count = end - first;
    for (std::size_t i = 0; i < count; ++i) {
        const Point<3>& position = model.vertex(static_cast<std::uint32_t>(first + i)).position;
        block.x[i] = position[0];
        block.y[i] = position[1];
        block.z[i] = position[2];
    }
    camera.project(block);
    bool inFront = true;
    for (std::size_t i = 0; i < count; ++i) {
        const double x = block.x[i], y = block.y[i], depth = block.z[i];
        projected[first + i] = {x, y, depth};
        inFront &= x == x && y == y && depth < 0.0;
    }
    return inFront;
}

}   // namespace

void Frame::render(const Model& model, const Camera& camera, const LightSet& lighting, Buffer& buffer,
                   Reporter& progress, const LineStyle& style)
{
    const int width = buffer.width(), height = static_cast<int>(camera.height);
    ended = false;
    project(model, camera, progress);
    bands = chooseBands(model, width, height);
    edges.order(model, vertices, bands, sharing, progress);
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
            const std::size_t blockEnd = std::min(end, i + CoordinateBlock::size);
            inFront &= projectBlock(model, camera, i, blockEnd, vertices.points.data());
            i = blockEnd;
        }
        if (!inFront) allInFront = false;
    };
    Workers::ofProcess().forPieces(sharing.threads, count,
                                   (sharing.pieceSize + interval - 1) / interval * interval, projectPiece);
    report.upTo(count, fraction);
    vertices.allInFront = allInFront;
}

/// Few enough rows that they stay in a processor's cache and every thread has several bands, enough
/// that facets reach into few. One thread where there is little work and others would come too late.
Bands Frame::chooseBands(const Model& model, int width, int height) noexcept
{
    constexpr int cachedPixels = 65536, mostBits = 6;
    const double work = static_cast<double>(width) * height + 16.0 * model.facetCount();
    drawingThreads = work <= 100.0 * static_cast<double>(sharing.pieceSize) ? 1 : sharing.threads;
    int rows = cachedPixels / width;
    if (drawingThreads > 1) rows = std::min(rows, height / static_cast<int>(4 * drawingThreads));
    int bits = 1;
    while (bits < mostBits && 2 << bits <= rows) ++bits;
    return {width, height, bits};
}

/// Draws bands, each on any thread.
class Frame::BandPainter {
public:
    BandPainter(Frame& owner, const Model& drawn, const Camera& view, const Buffer& sink)
        : frame(owner),
          model(drawn),
          camera(view),
          buffer(sink)
    {}

    /// Calls `pause` now and then.
    template <class Pause>
    void draw(std::size_t band, std::vector<PixelRow>& rows, const Workers::Turn& turn, Pause pause) const
    {
        const Bands& picture = frame.bands;
        const int first = static_cast<int>(band) << picture.rowBits,
                  end = std::min(first + picture.rows(), picture.height);
        if (rows.empty() || rows.front().width() != picture.width) rows.clear();
        while (rows.size() < static_cast<std::size_t>(end - first)) rows.emplace_back(picture.width);
        std::vector<FillRow> targets;
        for (PixelRow& row : rows) {
            row.clear();
            targets.push_back(row.target());
        }
        if (!buffer.needsRows(first, end)) return;
        const FillRows target{targets.data(), first, end, picture.width};
        frame.edges.forEachRun(band, [&](const SimpleFacet* facets, std::size_t count) {
            pause();
            if (!turn.stopping())
                frame.sharing.fillFacets(facets, count, &frame.vertices.points[0][0], target);
        });
        FacetStepper& stepper = frame.steppers[turn.thread];
        stepper.restart(model, frame.vertices.points.data(), picture.height);
        for (int y = first; y < end && !turn.stopping(); ++y) {
            pause();
            frame.edges.forEachFacet(y, [&stepper](std::uint32_t facet) { stepper.enter(facet); });
            rows[static_cast<std::size_t>(y - first)].scanFacets(stepper.row(y), model, camera);
        }
    }

private:
    Frame& frame;
    const Model& model;
    const Camera& camera;
    const Buffer& buffer;
};

/// The surfaces of all rows, in bands by all threads; the buffer takes their rows in order.
void Frame::scanRows(const Model& model, const Camera& camera, Buffer& buffer, Reporter& progress,
                     const RowTaker& take)
{
    const std::size_t slotCount = drawingThreads == 1 ? 1 : std::min(2 * drawingThreads, drawingThreads + 8);
    steppers.resize(std::max<std::size_t>(steppers.size(), drawingThreads));
    slots.resize(std::max(slots.size(), slotCount));
    Patience patience(progress);
    int taken = 0;
    const BandPainter painter(*this, model, camera, buffer);
    const auto drawBand = [&](std::size_t band, std::size_t slot, const Workers::Turn& turn) {
        painter.draw(band, slots[slot], turn, [&] {
            if (turn.thread == 0) patience.check(static_cast<double>(taken) / bands.height);
        });
    };
    const auto takeBand = [&](std::size_t band, std::size_t slot) {
        const int end = std::min((static_cast<int>(band) + 1) << bands.rowBits, bands.height);
        for (std::size_t i = 0; taken < end; ++i, ++taken) {
            progress.check(2, 1, static_cast<double>(taken) / bands.height);
            // The buffer's own row is the calling thread's: it is exchanged while others draw.
            buffer.exchange(slots[slot][i]);
            take(taken);
        }
    };
    Workers::ofProcess().inOrder(drawingThreads, bands.count(), slotCount, drawBand, takeBand);
}

void Frame::collectLines(const Model& model, const Camera& camera, Buffer& buffer, const LineStyle& style)
{
    lines.collect(model, camera, vertices.points.data(), style, shades);
    if (shades.size() >= Buffer::noFacet) throw std::bad_alloc();   // owners have 32 bits
    buffer.setScene(model, shades);
    buffer.setLines(model.facetCount(), lines);
    lineStepper.restart(lines, buffer.width(), static_cast<int>(camera.height), style.width, style.trace);
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
        if (y > 0) above = {rowAbove.owners(), rowAbove.depths()};
        visibility.setRows(y - 1, above, below);
        lineRows[1].clear(buffer.width());
        lineStepper.step(y - 1, visibility, lineRows[0], lineRows[1]);
        buffer.exchange(rowAbove);
        if (y > 0) {
            buffer.surfacesDone(y - 1);
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
