#include "render/EdgeTable.h"

#include "render/ScreenBox.h"
#include "render/ScreenEdge.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace belvor {
namespace {

/// The rows that the edges of the facet cross; none when no edge crosses one, or when a corner is not a
/// number.
EdgeRows rowsOf(const Model& model, const Facet& facet, const Bands& bands, const Point<3>* projected)
{
    EdgeRows all{bands.height, -1};
    ScreenBox box;
    for (std::uint32_t i = facet.firstEdge; i < facet.firstEdge + facet.edgeCount; ++i) {
        const Point<3>&from = projected[model.edge(i).from], &to = projected[model.edge(i).to];
        box.add(from);
        box.add(to);
        box.checkPoint(from);
        box.checkPoint(to);
        const EdgeEnds ends = EdgeEnds::of(from, to);
        const Point<3>&upper = *ends.upper, &lower = *ends.lower;
        const EdgeRows rows = activeRows(upper[1], upper[2], lower[1], lower[2], bands.height);
        if (rows.none()) continue;
        all = {std::min(all.first, rows.first), std::max(all.last, rows.last)};
    }
    if (!box.hasOnlyNumbers() || (box.inFront() && box.coversNoColumn(bands.width))) return {1, 0};
    return all;
}

/// The corners of a facet of three or four edges that follow one another.
struct Loop {
    std::uint32_t corners[4];
    std::uint32_t size;
};

bool isLoop(const Model& model, const Facet& facet, Loop& loop)
{
    const std::uint32_t count = facet.edgeCount;
    if (count != 3 && count != 4) return false;
    Edge copies[4];
    const Edge* edges = model.edgesOf(facet);
    if (!edges) {
        for (std::uint32_t i = 0; i < count; ++i) copies[i] = model.edge(facet.firstEdge + i);
        edges = copies;
    }
    loop.size = count;
    for (std::uint32_t i = 0; i < 3; ++i) loop.corners[i] = edges[i].from;
    if ((edges[0].to != edges[1].from) | (edges[1].to != edges[2].from)) return false;
    if (count == 3) return edges[2].to == edges[0].from;
    loop.corners[3] = edges[3].from;
    return (edges[2].to == edges[3].from) & (edges[3].to == edges[0].from);
}

/// The two chains of a triangle.
SimpleFacet simpleTriangle(std::uint32_t facet, const Loop& loop, const Point<3>* projected)
{
    std::uint32_t top = loop.corners[0], middle = loop.corners[1], bottom = loop.corners[2];
    if (projected[middle][1] < projected[top][1]) std::swap(middle, top);
    if (projected[bottom][1] < projected[middle][1]) std::swap(bottom, middle);
    if (projected[middle][1] < projected[top][1]) std::swap(middle, top);
    return {facet, top, bottom, middle, bottom, SimpleFacet::noCorner};
}

/// The two chains of a quadrilateral; false when some row crosses it more than twice.
bool makeSimple(std::uint32_t facet, const Loop& loop, const Point<3>* projected, SimpleFacet& made)
{
    std::uint32_t first = 0;
    for (std::uint32_t i = 1; i < 4; ++i)
        if (projected[loop.corners[i]][1] < projected[loop.corners[first]][1]) first = i;
    const std::uint32_t top = loop.corners[first], right = loop.corners[(first + 1) % 4],
                        across = loop.corners[(first + 2) % 4], left = loop.corners[(first + 3) % 4];
    const double yRight = projected[right][1], yAcross = projected[across][1], yLeft = projected[left][1];
    if (yAcross >= yRight && yAcross >= yLeft) made = {facet, top, across, right, across, left};
    else if (yRight >= yAcross && yAcross >= yLeft) made = {facet, top, right, left, across, right};
    else if (yLeft >= yAcross && yAcross >= yRight) made = {facet, top, left, right, across, left};
    else return false;
    return true;
}

/// Where one thread puts the facets of a picture.
struct Sorter {
    const Model& model;
    const ProjectedVertices& vertices;
    const Bands& bands;
    BandLists<SimpleFacet>& byBand;
    FacetRows& byRow;

    void add(std::uint32_t index) const
    {
        const Facet& facet = model.facet(index);
        const Point<3>* const projected = vertices.points.data();
        Loop loop;
        if (vertices.allInFront && isLoop(model, facet, loop) && addLoop(index, loop)) return;
        const EdgeRows crossed = rowsOf(model, facet, bands, projected);
        if (!crossed.none()) byRow.add(crossed.first, crossed.last, index);
    }

private:
    /// False when the facet is not simple or reaches into too many bands.
    bool addLoop(std::uint32_t index, const Loop& loop) const
    {
        const Point<3>* const projected = vertices.points.data();
        ScreenBox box;
        for (std::uint32_t i = 0; i < 3; ++i) box.add(projected[loop.corners[i]]);
        if (loop.size == 4) box.add(projected[loop.corners[3]]);
        if (box.surelyMisses()) return true;
        const EdgeRows rows = activeRows(box.top(), -1.0, box.bottom(), -1.0, bands.height);
        if (rows.none() || box.coversNoColumn(bands.width)) return true;
        const int first = bands.firstBandOf(rows.first), last = bands.lastBandOf(rows.last);
        if (last - first >= mostBands) return false;
        SimpleFacet simple;
        if (loop.size == 3) simple = simpleTriangle(index, loop, projected);
        else if (!makeSimple(index, loop, projected, simple)) return false;
        for (int band = first; band <= last; ++band) byBand.add(static_cast<std::size_t>(band), simple);
        return true;
    }

    static constexpr int mostBands = 8;   // that a facet stands in the lists of: there may be millions
};

}   // namespace

void EdgeTable::order(const Model& model, const ProjectedVertices& vertices, const Bands& bands,
                      const Sharing& sharing, Reporter& progress)
{
    used = std::clamp<std::size_t>(model.facetCount() / sharing.pieceSize, 1, sharing.threads);
    while (parts.size() < used) parts.push_back(std::make_unique<Part>());
    for (std::size_t i = 0; i < used; ++i) {
        parts[i]->bands.restart(bands.count());
        parts[i]->rows.clear();
    }
    const double edgeCount = model.edgeCount();
    const auto fraction = [edgeCount](double edge) { return edge / (3.0 * edgeCount) + 1.0 / 3.0; };
    StageReport report(progress, 256);
    const auto addPiece = [&](std::size_t first, std::size_t end, const Workers::Turn& turn) {
        Part& part = *parts[turn.thread];
        const Sorter sorter{model, vertices, bands, part.bands, part.rows};
        for (auto i = static_cast<std::uint32_t>(first); i < end && !turn.stopping(); ++i) {
            if (turn.thread == 0) report.upTo(model.facet(i).firstEdge + model.facet(i).edgeCount, fraction);
            sorter.add(i);
        }
    };
    Workers& workers = Workers::ofProcess();
    const auto threads = static_cast<unsigned>(used);
    workers.forPieces(threads, model.facetCount(), sharing.pieceSize, addPiece);
    if (model.facetCount() > 0) {
        const Facet& last = model.facet(model.facetCount() - 1);
        report.upTo(last.firstEdge + last.edgeCount, fraction);
    }
    workers.forPieces(threads, used, 1,
                      [&](std::size_t i, std::size_t, const Workers::Turn&) { parts[i]->rows.sort(bands); });
}

}   // namespace belvor
