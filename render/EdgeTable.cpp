#include "render/EdgeTable.h"

#include "render/SmallFacets.h"

#include <algorithm>
#include <cstddef>

namespace belvor {
namespace {

/// The box of a facet; `ends` receives the ends of the first few edges. Without `checked` all
/// points are known to be numbers in front of the eye.
template <bool checked>
ScreenBox boxOf(const Model& model, const Facet& facet, const Point<3>* projected, EdgeEnds* ends)
{
    ScreenBox box;
    for (std::uint32_t i = 0; i < facet.edgeCount; ++i) {
        const Edge& edge = model.edge(facet.firstEdge + i);
        const Point<3>& from = projected[edge.from];
        const Point<3>& to = projected[edge.to];
        box.add(from);
        box.add(to);
        if constexpr (checked) {
            box.checkPoint(from);
            box.checkPoint(to);
        }
        if (i < SmallFacets::maxEdges) ends[i] = EdgeEnds::of(from, to);
    }
    return box;
}

/// The rows that the edges of the facet cross; none when no edge crosses one.
EdgeRows rowsOf(const Model& model, const Facet& facet, const Point<3>* projected, int height)
{
    EdgeRows all{height, -1};
    for (std::uint32_t i = facet.firstEdge; i < facet.firstEdge + facet.edgeCount; ++i) {
        const EdgeEnds ends = EdgeEnds::of(projected[model.edge(i).from], projected[model.edge(i).to]);
        const Point<3>&upper = *ends.upper, &lower = *ends.lower;
        const EdgeRows rows = activeRows(upper[1], upper[2], lower[1], lower[2], height);
        if (rows.none()) continue;
        all = {std::min(all.first, rows.first), std::max(all.last, rows.last)};
    }
    return all;
}

/// Where one thread puts the facets of a picture.
struct Sorter {
    const Model& model;
    const ProjectedVertices& vertices;
    const int width, height;
    const std::size_t maxSpans;
    RowSpans& spans;
    FacetRows& rows;

    void add(std::uint32_t index) const
    {
        const Facet& facet = model.facet(index);
        const Point<3>* const projected = vertices.points.data();
        EdgeEnds ends[SmallFacets::maxEdges];
        const ScreenBox box = vertices.allInFront ? boxOf<false>(model, facet, projected, ends)
                                                  : boxOf<true>(model, facet, projected, ends);
        if (!box.allNumbers) return;
        if (box.inFront()) {
            const EdgeRows rowsOfBox = activeRows(box.top, -1.0, box.bottom, -1.0, height);
            if (rowsOfBox.none() || box.coversNoColumn(width)) return;
            if (facet.edgeCount <= SmallFacets::maxEdges
                && rowsOfBox.last - rowsOfBox.first < SmallFacets::maxRows && spans.size() < maxSpans
                && SmallFacets(width, height, spans).add(ends, facet.edgeCount, index, rowsOfBox))
                return;
        }
        const EdgeRows crossed = rowsOf(model, facet, projected, height);
        if (!crossed.none()) rows.add(crossed.first, crossed.last, index);
    }
};

}   // namespace

void EdgeTable::order(const Model& model, const ProjectedVertices& vertices, int width, int height,
                      int bandRows, const Sharing& sharing, Reporter& progress)
{
    used = std::clamp<std::size_t>(model.facetCount() / sharing.pieceSize, 1, sharing.threads);
    while (parts.size() < used) parts.push_back(std::make_unique<Part>());
    // Ready-made spans are worth their memory for small facets only.
    const std::size_t maxSpans =
        width <= RowSpans::maxWidth ? 2 * std::size_t{model.facetCount()} / used + 65536 : 0;
    for (std::size_t i = 0; i < used; ++i) {
        parts[i]->spans.restart(height);
        parts[i]->rows.clear();
    }
    const double edgeCount = model.edgeCount();
    const auto fraction = [edgeCount](double edge) { return edge / (3.0 * edgeCount) + 1.0 / 3.0; };
    StageReport report(progress, 256);
    const auto addPiece = [&](std::size_t first, std::size_t end, const Workers::Turn& turn) {
        Part& part = *parts[turn.thread];
        const Sorter sorter{model, vertices, width, height, maxSpans, part.spans, part.rows};
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
    workers.forPieces(threads, used, 1, [&](std::size_t i, std::size_t, const Workers::Turn&) {
        parts[i]->rows.sort(height, bandRows);
    });
}

}   // namespace belvor
