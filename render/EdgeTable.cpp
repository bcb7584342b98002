#include "render/EdgeTable.h"

#include "errors/Reporter.h"
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

/// The first row that an edge of the facet crosses; `height` when none does.
int firstRow(const Model& model, const Facet& facet, const Point<3>* projected, int height)
{
    int first = height;
    for (std::uint32_t i = facet.firstEdge; i < facet.firstEdge + facet.edgeCount; ++i) {
        const EdgeEnds ends = EdgeEnds::of(projected[model.edge(i).from], projected[model.edge(i).to]);
        const Point<3>&upper = *ends.upper, &lower = *ends.lower;
        const EdgeRows rows = activeRows(upper[1], upper[2], lower[1], lower[2], height);
        if (!rows.none()) first = std::min(first, rows.first);
    }
    return first;
}

}   // namespace

void EdgeTable::order(const Model& model, const ProjectedVertices& vertices, int width, int height,
                      Reporter& progress)
{
    // Ready-made spans are worth their memory for small facets only.
    const std::size_t maxSpans =
        width <= RowSpans::maxWidth ? 2 * std::size_t{model.facetCount()} + 65536 : 0;
    spans.restart(height);
    rows.clear();
    const SmallFacets small(width, height, spans);
    const Point<3>* const projected = vertices.points.data();
    const double edgeCount = model.edgeCount();
    std::uint32_t reported = 0;
    for (std::uint32_t i = 0; i < model.facetCount(); ++i) {
        const Facet& facet = model.facet(i);
        for (; reported < facet.firstEdge + facet.edgeCount; reported += 256)
            progress.check(2, 0, reported / (3.0 * edgeCount) + 1.0 / 3.0);
        EdgeEnds ends[SmallFacets::maxEdges];
        const ScreenBox box = vertices.allInFront ? boxOf<false>(model, facet, projected, ends)
                                                  : boxOf<true>(model, facet, projected, ends);
        if (!box.allNumbers) continue;
        if (box.inFront()) {
            const EdgeRows rowsOfBox = activeRows(box.top, -1.0, box.bottom, -1.0, height);
            if (rowsOfBox.none() || box.coversNoColumn(width)) continue;
            if (facet.edgeCount <= SmallFacets::maxEdges
                && rowsOfBox.last - rowsOfBox.first < SmallFacets::maxRows && spans.size() < maxSpans
                && small.add(ends, facet.edgeCount, i, rowsOfBox))
                continue;
        }
        if (const int row = firstRow(model, facet, projected, height); row < height) rows.add(row, i);
    }
    rows.sort(height);
}

}   // namespace belvor
