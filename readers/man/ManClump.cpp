#include "readers/man/ManClump.h"

#include "errors/Reporter.h"

#include <cmath>

namespace belvor {

namespace {

constexpr std::size_t maxStepsBetweenReports = 65536;

}   // namespace

template <class Visitor, class Pause>
void ManClump::visitSides(Visitor&& visit, Pause&& pause) const
{
    for (std::size_t i = 0; i < edges.size(); ++i) {
        const SharedEdge& edge = edges[i];
        if (edge.left != 0) visit(edge.left - 1, Edge{edge.from, edge.to});
        if (edge.right != 0) visit(edge.right - 1, Edge{edge.to, edge.from});
        if (i % maxStepsBetweenReports == maxStepsBetweenReports - 1) pause();
    }
}

bool ManClump::appendFacets(Reporter& progress, double fraction)
{
    const auto pause = [&] { progress.check(1, 0, fraction); };
    // 1. A counting sort by facet: where each facet's edges start, then the edges behind one another.
    std::vector<std::size_t> start(materials.size() + 1);
    visitSides([&](std::uint32_t facet, const Edge&) { ++start[facet + 1]; }, pause);
    for (std::size_t i = 1; i < start.size(); ++i) start[i] += start[i - 1];
    std::vector<Edge> sorted(start.back());
    std::vector<std::size_t> next(start);
    visitSides([&](std::uint32_t facet, const Edge& edge) { sorted[next[facet]++] = edge; }, pause);

    // 2. The facets, each with its edges.
    leaving.assign(filled.model().vertexCount() - base, 0);
    for (std::size_t i = 0; i < materials.size(); ++i) {
        if (i % 256 == 0) pause();
        const std::span<const Edge> its(sorted.data() + start[i], sorted.data() + start[i + 1]);
        if (!appendFacet(*materials[i], its, pause)) return false;
    }
    return true;
}

template <class Pause>
bool ManClump::appendFacet(const Material& material, std::span<const Edge> its, Pause&& pause)
{
    if (its.empty() || !closes(its.data(), its.data() + its.size())) return false;
    if (its.size() > maxStepsBetweenReports) pause();
    filled.addFacet(material, planeOf(its.data(), its.data() + its.size()));
    for (std::size_t i = 0; i < its.size(); ++i) {
        filled.addEdge(its[i].from, its[i].to);
        if (i % maxStepsBetweenReports == maxStepsBetweenReports - 1) pause();
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
    const Point<3>& origin = filled.model().vertex(first->from).position;
    Vector<3> sum;
    for (const Edge* edge = first; edge != last; ++edge)
        sum += (filled.model().vertex(edge->from).position - origin)
                   .cross(filled.model().vertex(edge->to).position - origin);
    const double size = sum.length();
    return Plane(size > 0.0 && std::isfinite(size) ? sum : Vector<3>(0, 0, 1), origin);
}

}   // namespace belvor
