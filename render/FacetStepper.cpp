#include "render/FacetStepper.h"

#include <algorithm>
#include <cmath>

namespace belvor {

void FacetStepper::restart(const Model& scene, const Point<3>* vertices, int rows, Pauses& meter) noexcept
{
    model = &scene;
    projected = vertices;
    height = rows;
    pauses = &meter;
    slots.clear();
    freeSlots.clear();
    activeSlots.clear();
    polygons.clear();
}

bool FacetStepper::makeEdge(std::uint32_t index, SteppedEdge& edge) const noexcept
{
    const Edge& sides = model->edge(index);
    const EdgeEnds ends = EdgeEnds::of(projected[sides.from], projected[sides.to]);
    const Point<3>&upper = *ends.upper, &lower = *ends.lower;
    const EdgeRows rows = activeRows(upper[1], upper[2], lower[1], lower[2], height);
    if (rows.none()) return false;
    edge = {ScreenEdge(ends), rows.first, rows.last, index};
    return true;
}

std::span<const ActiveFacet> FacetStepper::row(int y)
{
    active.clear();
    crossings.clear();

    // 1. Facets of few edges.
    std::size_t kept = 0;
    for (const std::uint32_t number : activeSlots) {
        const Slot& slot = slots[number];
        cross(slot, y);
        if (slot.last > y) activeSlots[kept++] = number;
        else freeSlots.push_back(number);
    }
    activeSlots.resize(kept);

    // 2. Facets of many edges.
    std::erase_if(polygons, [this, y](Polygon& polygon) { return !cross(polygon, y); });

    // 3. The crossings have stopped moving: point at them.
    const Crossing* at = crossings.data();
    for (ActiveFacet& facet : active) {
        facet.crossings = at;
        at += facet.crossingCount;
    }
    return active;
}

void FacetStepper::enter(std::uint32_t index)
{
    const Facet& facet = model->facet(index);
    pauses->step(4);
    if (facet.edgeCount > slotEdges) {
        enterPolygon(facet, index);
        return;
    }
    if (freeSlots.empty()) {
        slots.emplace_back();
        freeSlots.push_back(static_cast<std::uint32_t>(slots.size() - 1));
    }
    Slot& slot = slots[freeSlots.back()];
    slot.facet = index;
    slot.edgeCount = 0;
    slot.last = -1;
    for (std::uint32_t i = facet.firstEdge; i < facet.firstEdge + facet.edgeCount; ++i) {
        if (!makeEdge(i, slot.edges[slot.edgeCount])) continue;
        slot.last = std::max(slot.last, slot.edges[slot.edgeCount++].last);
    }
    activeSlots.push_back(freeSlots.back());
    freeSlots.pop_back();
}

void FacetStepper::enterPolygon(const Facet& facet, std::uint32_t index)
{
    Polygon& polygon = polygons.emplace_back();
    polygon.facet = index;
    SteppedEdge edge;
    for (std::uint32_t i = facet.firstEdge; i < facet.firstEdge + facet.edgeCount; ++i) {
        pauses->step();
        if (makeEdge(i, edge)) polygon.edges.push_back(edge);
    }
    std::stable_sort(polygon.edges.begin(), polygon.edges.end(),
                     [this](const SteppedEdge& a, const SteppedEdge& b) {
                         pauses->step();
                         return a.first < b.first;
                     });
}

void FacetStepper::cross(const Slot& slot, int y)
{
    found.clear();
    pauses->step(2);
    for (std::uint32_t i = 0; i < slot.edgeCount; ++i) {
        const SteppedEdge& edge = slot.edges[i];
        if (edge.first <= y && y <= edge.last) found.push_back({edge.line.at(y), &edge});
    }
    addSorted(slot.facet, y);
}

/// False when no edge of the polygon is left for later rows.
bool FacetStepper::cross(Polygon& polygon, int y)
{
    std::erase_if(polygon.live, [y](const SteppedEdge* edge) { return edge->last < y; });
    for (; polygon.next < polygon.edges.size() && polygon.edges[polygon.next].first <= y; ++polygon.next)
        if (polygon.edges[polygon.next].last >= y) polygon.live.push_back(&polygon.edges[polygon.next]);
    found.clear();
    for (const SteppedEdge* edge : polygon.live) {
        pauses->step();
        found.push_back({edge->line.at(y), edge});
    }
    addSorted(polygon.facet, y);
    return !polygon.live.empty() || polygon.next < polygon.edges.size();
}

/// Appends what was found as the crossings of a facet, sorted. Edges that cross at the same x
/// keep the order of a list that is reversed from row to row while new edges, in store order,
/// are put in front of it.
void FacetStepper::addSorted(std::uint32_t facet, int y)
{
    if (found.empty()) return;
    for (const FoundCrossing& each : found)
        if (std::isnan(each.crossing.x)) return;
    const auto before = [this, y](const FoundCrossing& a, const FoundCrossing& b) {
        pauses->step();
        if (a.crossing.x != b.crossing.x) return a.crossing.x < b.crossing.x;
        const bool reversed = (y - std::max(a.edge->first, b.edge->first)) % 2 != 0;
        if (a.edge->first != b.edge->first) return (a.edge->first > b.edge->first) != reversed;
        return a.edge->index != b.edge->index && (a.edge->index < b.edge->index) != reversed;
    };
    if (found.size() == 2) {
        if (before(found[1], found[0])) std::swap(found[0], found[1]);
    } else {
        std::sort(found.begin(), found.end(), before);
    }
    for (const FoundCrossing& each : found) crossings.push_back(each.crossing);
    active.push_back({facet, static_cast<std::uint32_t>(found.size()), nullptr});
}

}   // namespace belvor
