#include "render/EdgeTable.h"

#include "app/errors/Reporter.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace belvor {
namespace {

constexpr EdgeRows never{1, 0};

/// The row below `y`, which is not negative and less than `height`.
int rowBelow(double y) noexcept { return static_cast<int>(y) + 1; }

/// The last row not below `y`, which is not negative.
int rowAtOrAbove(double y, int height) noexcept { return y < height ? static_cast<int>(y) : height - 1; }

}   // namespace

EdgeRows activeRows(double y0, double z0, double y1, double z1, int height) noexcept
{
    const int last = height - 1;
    if (!(y0 < y1)) return never;
    if (z0 >= 0.0) {   // the upper end lies behind the eye: visible from the lower end downwards
        if (z1 >= 0.0 || !(y1 < last)) return never;
        return {y1 < 0.0 ? 0 : rowBelow(y1), last};
    }
    if (z1 >= 0.0) {   // the lower end lies behind: visible from the top down to the upper end
        if (!(y0 >= 0.0)) return never;
        return {0, rowAtOrAbove(y0, height)};
    }
    if (!(y1 >= 0.0) || !(y0 < last)) return never;
    return {y0 < 0.0 ? 0 : rowBelow(y0), rowAtOrAbove(y1, height)};
}

EdgeTable::EdgeTable(const BlockStore<Vertex>& vertexStore, BlockStore<Edge>& edgeStore, const BlockStore<Facet>& facetStore,
                     int width, int rows, Reporter& progress)
    : vertices(vertexStore), edges(edgeStore), facets(facetStore), height(rows),
      rowStarts(static_cast<std::size_t>(rows) + 1)
{
    // Facets by their first row, in store order within a row (a counting sort).
    std::vector<std::uint32_t> firstRow(facets.size());
    std::uint32_t reported = 0;
    for (std::uint32_t i = 0; i < facets.size(); ++i) {
        const Facet& facet = facets[i];
        for (; reported < facet.firstEdge + facet.edgeCount; reported += 256)
            progress.check(2, 0, reported / (3.0 * edges.size()) + 1.0 / 3.0);
        firstRow[i] = orderFacetEdges(facet, width);
        if (firstRow[i] < static_cast<std::uint32_t>(height)) ++rowStarts[firstRow[i] + 1];
    }
    for (std::size_t y = 1; y < rowStarts.size(); ++y) rowStarts[y] += rowStarts[y - 1];
    facetsByRow.resize(rowStarts.back());
    std::vector<std::uint32_t> next(rowStarts.begin(), rowStarts.end() - 1);
    for (std::uint32_t i = 0; i < facets.size(); ++i)
        if (firstRow[i] < static_cast<std::uint32_t>(height)) facetsByRow[next[firstRow[i]]++] = i;
}

/// Puts the upper end of each edge first. The first row of the facet; beyond the last row
/// when it can cover no pixel.
std::uint32_t EdgeTable::orderFacetEdges(const Facet& facet, int width)
{
    constexpr std::uint32_t nowhere = std::numeric_limits<std::uint32_t>::max();
    std::uint32_t first = nowhere;
    bool numbers = true, inFront = true;
    double left = std::numeric_limits<double>::max(), right = -left;
    for (std::uint32_t i = facet.firstEdge, end = i + facet.edgeCount; i < end; ++i) {
        Edge& edge = edges[i];
        const Point<3>* upper = &vertices[edge.from].projected;
        const Point<3>* lower = &vertices[edge.to].projected;
        if ((*upper)[1] > (*lower)[1]) {
            std::swap(edge.from, edge.to);
            std::swap(upper, lower);
        }
        numbers = numbers && !std::isnan((*upper)[1]) && !std::isnan((*lower)[1]);
        inFront = inFront && (*upper)[2] < 0.0 && (*lower)[2] < 0.0;
        left = std::min(left, std::min((*upper)[0], (*lower)[0]));
        right = std::max(right, std::max((*upper)[0], (*lower)[0]));
        const EdgeRows rows = activeRows((*upper)[1], (*upper)[2], (*lower)[1], (*lower)[2], height);
        if (rows.first <= rows.last) first = std::min(first, static_cast<std::uint32_t>(rows.first));
    }
    // Wholly beside the picture, by more than a crossing can be rounded across the border.
    constexpr double exactEnough = 1e12;
    const bool beside = inFront && ((right <= -1.0 && left > -exactEnough) || (left >= width && right < exactEnough));
    return numbers && !beside ? first : nowhere;
}

bool EdgeTable::makeRun(std::uint32_t number, Run& run) const noexcept
{
    const Edge& edge = edges[number];
    const Point<3>& upper = vertices[edge.from].projected;
    const Point<3>& lower = vertices[edge.to].projected;
    const EdgeRows rows = activeRows(upper[1], upper[2], lower[1], lower[2], height);
    if (rows.first > rows.last) return false;
    run = {upper[0], upper[1], upper[2], lower[0] - upper[0], lower[1] - upper[1], lower[2] - upper[2],
           rows.first, rows.last, number};
    return true;
}

std::span<const ActiveFacet> EdgeTable::row(int y)
{
    active.clear();
    crossings.clear();

    std::size_t kept = 0;
    for (const std::uint32_t number : activeSlots) {
        const Slot& slot = slots[number];
        cross(slot, y);
        if (slot.last > y) activeSlots[kept++] = number;
        else freeSlots.push_back(number);
    }
    activeSlots.resize(kept);

    const auto row = static_cast<std::size_t>(y);
    for (std::uint32_t i = rowStarts[row]; i < rowStarts[row + 1]; ++i) enter(facetsByRow[i], y);
    std::erase_if(polygons, [this, y](Polygon& polygon) { return !cross(polygon, y); });

    const Crossing* at = crossings.data();
    for (ActiveFacet& facet : active) {
        facet.crossings = at;
        at += facet.crossingCount;
    }
    return active;
}

void EdgeTable::enter(std::uint32_t place, int y)
{
    const Facet& facet = facets[place];
    if (facet.edgeCount > slotEdges) {
        enterPolygon(facet, place);
        return;
    }
    if (freeSlots.empty()) {
        slots.emplace_back();
        freeSlots.push_back(static_cast<std::uint32_t>(slots.size() - 1));
    }
    Slot& slot = slots[freeSlots.back()];
    slot.facet = place;
    slot.runCount = 0;
    slot.last = -1;
    for (std::uint32_t i = facet.firstEdge; i < facet.firstEdge + facet.edgeCount; ++i) {
        if (!makeRun(i, slot.runs[slot.runCount])) continue;
        slot.last = std::max(slot.last, slot.runs[slot.runCount++].last);
    }
    cross(slot, y);
    if (slot.last <= y) return;
    activeSlots.push_back(freeSlots.back());
    freeSlots.pop_back();
}

void EdgeTable::enterPolygon(const Facet& facet, std::uint32_t place)
{
    Polygon& polygon = polygons.emplace_back();
    polygon.facet = place;
    Run run;
    for (std::uint32_t i = facet.firstEdge; i < facet.firstEdge + facet.edgeCount; ++i)
        if (makeRun(i, run)) polygon.runs.push_back(run);
    std::stable_sort(polygon.runs.begin(), polygon.runs.end(), [](const Run& a, const Run& b) { return a.first < b.first; });
}

namespace {

/// The crossing of an edge with row `y`. Written so that every build rounds alike.
template <class Run>
Crossing crossingAt(const Run& run, int y) noexcept
{
    const double t = (y - run.y) / run.dy;
    return {run.x + run.dx * t, run.depth + run.ddepth * t};
}

}   // namespace

void EdgeTable::cross(const Slot& slot, int y)
{
    hits.clear();
    for (std::uint32_t i = 0; i < slot.runCount; ++i) {
        const Run& run = slot.runs[i];
        if (run.first <= y && y <= run.last) hits.push_back({crossingAt(run, y), &run});
    }
    addSorted(slot.facet, y);
}

bool EdgeTable::cross(Polygon& polygon, int y)
{
    std::erase_if(polygon.live, [y](const Run* run) { return run->last < y; });
    while (polygon.next < polygon.runs.size() && polygon.runs[polygon.next].first <= y)
        polygon.live.push_back(&polygon.runs[polygon.next++]);
    hits.clear();
    for (const Run* run : polygon.live) hits.push_back({crossingAt(*run, y), run});
    addSorted(polygon.facet, y);
    return !polygon.live.empty() || polygon.next < polygon.runs.size();
}

/// Appends the hits as the crossings of a facet, sorted. Edges that cross at the same x keep
/// the order of a list that is turned round from row to row while new edges, in store order,
/// are put in front of it.
void EdgeTable::addSorted(std::uint32_t facet, int y)
{
    if (hits.empty()) return;
    for (const Hit& hit : hits)
        if (std::isnan(hit.crossing.x)) return;
    const auto before = [y](const Hit& a, const Hit& b) {
        if (a.crossing.x != b.crossing.x) return a.crossing.x < b.crossing.x;
        const bool turned = (y - std::max(a.run->first, b.run->first)) % 2 != 0;
        if (a.run->first != b.run->first) return (a.run->first > b.run->first) != turned;
        return a.run->edge != b.run->edge && (a.run->edge < b.run->edge) != turned;
    };
    if (hits.size() == 2) {
        if (before(hits[1], hits[0])) std::swap(hits[0], hits[1]);
    } else {
        std::sort(hits.begin(), hits.end(), before);
    }
    for (const Hit& hit : hits) crossings.push_back(hit.crossing);
    active.push_back({facet, static_cast<std::uint32_t>(hits.size()), nullptr});
}

}   // namespace belvor
