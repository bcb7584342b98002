#include "render/EdgeTable.h"

#include "render/ScreenBox.h"
#include "render/ScreenCells.h"
#include "render/ScreenEdge.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <utility>

namespace belvor {
namespace {

/// The rows that the edges of the facet cross; none when no edge crosses one, or when a corner is not a
/// number.
EdgeRows rowsOf(const Model& model, const Facet& facet, const Bands& bands, const Point<3>* projected,
                Pauses& pauses)
{
    EdgeRows all{bands.height, -1};
    ScreenBox box;
    for (std::uint32_t i = facet.firstEdge; i < facet.firstEdge + facet.edgeCount; ++i) {
        pauses.step();
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

bool isLoop(const Edge* edges, std::uint32_t count, Loop& loop)
{
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

/// Facets that follow one another, with their edges side by side.
class FacetGroup {
public:
    static constexpr std::uint32_t size = 32;
    /// A facet, and its first edge, both counted from the group's first.
    struct Chosen {
        std::uint32_t facet, edge;
    };

    /// The facets `first` to `end` − 1, all of one block of `size`; `edge` is the first one of the first.
    FacetGroup(const Model& model, std::uint32_t first, std::uint32_t end, std::uint32_t edge)
        : count(end - first),
          counts(model.edgeCounts(first, count)),
          edgeCount(std::accumulate(counts, counts + count, 0u))
    {
        if (edgeCount > mostEdges) return;   // so that no count is Model::manyEdges
        edges = model.edgesFrom(edge, edgeCount);
        if (edges) return;
        for (std::uint32_t i = 0; i < edgeCount; ++i) copies[i] = model.edge(edge + i);
        edges = copies;
    }

    /// Puts into `chosen` which facets may hold a sample point; returns their number. Without a branch for
    /// each: which of them do can hardly be foretold. Needs edges.
    std::uint32_t choose(const std::uint32_t* cells, Chosen* chosen) const
    {
        std::uint32_t number = 0, at = 0;
        for (std::uint32_t i = 0; i < count; ++i) {
            const std::uint32_t sides = counts[i];
            chosen[number] = {i, at};
            if (sides == 3) number += mayHoldSample<3>(edges + at, cells);
            else if (sides == 4) number += mayHoldSample<4>(edges + at, cells);
            else ++number;
            at += sides;
        }
        return number;
    }

    const std::uint32_t count;
    const std::uint8_t* const counts;   ///< Of edges.
    const std::uint32_t edgeCount;      ///< Of all facets.
    const Edge* edges = nullptr;        ///< None when there are too many.

private:
    static constexpr std::uint32_t mostEdges = Model::manyEdges - 1;

    template <std::uint32_t sides>
    static bool mayHoldSample(const Edge* at, const std::uint32_t* cells)
    {
        std::uint32_t corners[sides], gaps = 0;
        for (std::uint32_t i = 0; i < sides; ++i) {
            corners[i] = cells[at[i].from];
            gaps |= at[i].to ^ at[(i + 1) % sides].from;
        }
        return ScreenCells::mayHoldSample(corners) | (gaps != 0);   // with a gap there are more corners
    }

    Edge copies[mostEdges];
};

/// Where one thread puts the facets of a picture.
struct Sorter {
    const Model& model;
    const ProjectedVertices& vertices;
    const Bands& bands;
    BandLists<SimpleFacet>& byBand;
    FacetRows& byRow;
    Pauses& pauses;

    /// The facets of `group`, of which `first` is the first.
    void addGroup(const FacetGroup& group, std::uint32_t first) const
    {
        if (!group.edges || !vertices.hasCells) {
            for (std::uint32_t i = 0; i < group.count; ++i) add(first + i);
            return;
        }
        FacetGroup::Chosen chosen[FacetGroup::size];
        const std::uint32_t count = group.choose(vertices.cells.data(), chosen);
        for (std::uint32_t i = 0; i < count; ++i)
            add(first + chosen[i].facet, group.edges + chosen[i].edge, group.counts[chosen[i].facet]);
    }

private:
    void add(std::uint32_t index) const
    {
        const Facet& facet = model.facet(index);
        Edge edges[4];
        if (facet.edgeCount <= 4)
            for (std::uint32_t i = 0; i < facet.edgeCount; ++i) edges[i] = model.edge(facet.firstEdge + i);
        add(index, edges, facet.edgeCount);
    }

    void add(std::uint32_t index, const Edge* edges, std::uint32_t edgeCount) const
    {
        Loop loop;
        if (vertices.allInFront && (edgeCount == 3 || edgeCount == 4) && isLoop(edges, edgeCount, loop)
            && addLoop(index, loop))
            return;
        const EdgeRows crossed = rowsOf(model, model.facet(index), bands, vertices.points.data(), pauses);
        if (!crossed.none()) byRow.add(crossed.first, crossed.last, index);
    }

    /// False when the facet is not simple or reaches into too many bands.
    bool addLoop(std::uint32_t index, const Loop& loop) const
    {
        const Point<3>* const projected = vertices.points.data();
        ScreenBox box;
        for (std::uint32_t i = 0; i < 3; ++i) box.add(projected[loop.corners[i]]);
        if (loop.size == 4) box.add(projected[loop.corners[3]]);
        const EdgeRows rows = activeRows(box.top(), -1.0, box.bottom(), -1.0, bands.height);
        if (rows.none() || box.coversNoColumn(bands.width)) return true;
        const int first = bands.firstBandOf(rows.first), last = bands.lastBandOf(rows.last);
        if (last - first >= mostBands) return false;
        SimpleFacet simple;
        if (loop.size == 3) simple = simpleTriangle(index, loop, projected);
        else if (!makeSimple(index, loop, projected, simple)) return false;
        for (int band = first; band <= last; ++band) byBand.add(static_cast<std::size_t>(band)) = simple;
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
        Pauses pauses = pausesOf(turn, [&] { report.again(fraction); });
        const Sorter sorter{model, vertices, bands, part.bands, part.rows, pauses};
        auto i = static_cast<std::uint32_t>(first);
        for (std::uint32_t edge = model.facet(i).firstEdge; i < end && !turn.stopping();) {
            const auto groupEnd = static_cast<std::uint32_t>(
                std::min<std::size_t>(end, (i / FacetGroup::size + 1) * FacetGroup::size));
            const FacetGroup group(model, i, groupEnd, edge);
            if (group.edges) {
                edge += group.edgeCount;
            } else {
                const Facet& last = model.facet(groupEnd - 1);
                edge = last.firstEdge + last.edgeCount;
            }
            if (turn.thread == 0) report.upTo(edge, fraction);
            sorter.addGroup(group, i);
            i = groupEnd;
        }
    };
    Workers& workers = Workers::ofProcess();
    const auto threads = static_cast<unsigned>(used);
    workers.forPieces(threads, model.facetCount(), sharing.pieceOf(model.facetCount()), addPiece);
    if (model.facetCount() > 0) {
        const Facet& last = model.facet(model.facetCount() - 1);
        report.upTo(last.firstEdge + last.edgeCount, fraction);
    }
    workers.forPieces(threads, used, 1, [&](std::size_t i, std::size_t, const Workers::Turn& turn) {
        Pauses pauses = pausesOf(turn, [&] { report.again(fraction); });
        parts[i]->rows.sort(bands, pauses);
    });
}

}   // namespace belvor
