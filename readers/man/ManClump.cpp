#include "readers/man/ManClump.h"

#include "errors/Reporter.h"

#include <cmath>

namespace belvor {

template <class Visitor>
void ManClump::visitSides(Visitor&& visit) const
{
    for (const SharedEdge& edge : edges) {
        if (edge.left != 0) visit(edge.left - 1, Edge{edge.from, edge.to});
        if (edge.right != 0) visit(edge.right - 1, Edge{edge.to, edge.from});
    }
}

bool ManClump::appendFacets(Reporter& progress, double fraction)
{
    // A counting sort by facet: where each facet's edges start, then the edges in their places.
    std::vector<std::size_t> start(materials.size() + 1);
    visitSides([&](std::uint32_t facet, const Edge&) { ++start[facet + 1]; });
    for (std::size_t i = 1; i < start.size(); ++i) start[i] += start[i - 1];
    std::vector<Edge> sorted(start.back());
    std::vector<std::size_t> place(start);
    visitSides([&](std::uint32_t facet, const Edge& edge) { sorted[place[facet]++] = edge; });

    leaving.assign(filled.vertexCount() - base, 0);
    for (std::size_t i = 0; i < materials.size(); ++i) {
        if (i % 256 == 0) progress.check(1, 0, fraction);
        const Edge* const first = sorted.data() + start[i];
        const Edge* const last = sorted.data() + start[i + 1];
        if (first == last || !closes(first, last)) return false;
        filled.addFacet(*materials[i], planeOf(first, last));
        for (const Edge* edge = first; edge != last; ++edge) filled.addEdge(edge->from, edge->to);
    }
    return true;
}

bool ManClump::closes(const Edge* first, const Edge* last)
{
    for (const Edge* edge = first; edge != last; ++edge) {
        ++leaving[edge->from - base];
        --leaving[edge->to - base];
    }
    for (const Edge* edge = first; edge != last; ++edge)
        if (leaving[edge->from - base] != 0 || leaving[edge->to - base] != 0) return false;
    return true;   // and `leaving` is all zero again for the next facet
}

Plane ManClump::planeOf(const Edge* first, const Edge* last) const
{
    // Measured from a vertex of the facet: a small facet far from the origin keeps its digits.
    const Point<3>& origin = filled.vertex(first->from).position;
    Vector<3> sum;
    for (const Edge* edge = first; edge != last; ++edge)
        sum += (filled.vertex(edge->from).position - origin).cross(filled.vertex(edge->to).position - origin);
    const double size = sum.length();
    return Plane(size > 0.0 && std::isfinite(size) ? sum : Vector<3>(0, 0, 1), origin);
}

}   // namespace belvor
