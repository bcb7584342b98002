#include "render/EdgeTable.h"

#include "errors/Reporter.h"

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

/// The extent of a facet on the screen.
struct EdgeTable::Box {
    double left = std::numeric_limits<double>::max(), right = -left, top = left, bottom = -left;
    double nearest = -left;   // the largest depth: negative when all of it is in front of the eye
    bool numbers = true;      // no coordinate is undefined

    void add(const Point<3>& p) noexcept
    {
        left = p[0] < left ? p[0] : left;
        right = p[0] > right ? p[0] : right;
        top = p[1] < top ? p[1] : top;
        bottom = p[1] > bottom ? p[1] : bottom;
    }
    /// What add() leaves out, for points that may lie behind the eye or nowhere.
    void addOdd(const Point<3>& p) noexcept
    {
        nearest = p[2] > nearest ? p[2] : nearest;
        numbers &= p[0] == p[0] && p[1] == p[1];
    }
    bool inFront() const noexcept { return nearest < 0.0; }

    /// Whether no sample point can lie between the sides: beside the picture, or between two
    /// columns. A crossing may be rounded past the corners, by far less than the margin.
    bool coversNoColumn(int columns) const noexcept
    {
        constexpr double margin = 1e-6, exactEnough = 1e8;
        if (!(left > -exactEnough && right < exactEnough)) return false;
        return right <= -margin || left >= columns
               || (left >= margin && static_cast<int>(left - margin) == static_cast<int>(right + margin));
    }
};

EdgeTable::EdgeTable(const LargeVector<Point<3>>& projectedVertices, bool plain, BlockStore<Edge>& edgeStore,
                     const BlockStore<Facet>& facetStore, int rowWidth, int rows, RowSpans& spans,
                     Reporter& progress)
    : projected(projectedVertices),
      edges(edgeStore),
      facets(facetStore),
      width(rowWidth),
      height(rows),
      shortFacets(spans)
{
    // Ready-made runs are worth their memory for small facets only.
    const std::size_t mostRuns = width <= RowSpans::largestWidth ? 2 * std::size_t{facets.size()} + 65536 : 0;
    shortFacets.restart(rows);
    std::vector<Entry> entries;
    const double edgeCount = edges.size();
    std::uint32_t reported = 0;
    for (std::uint32_t i = 0; i < facets.size(); ++i) {
        const Facet& facet = facets[i];
        for (; reported < facet.firstEdge + facet.edgeCount; reported += 256)
            progress.check(2, 0, reported / (3.0 * edgeCount) + 1.0 / 3.0);
        Ends ends[slotEdges];
        const Box box = plain ? orderEdges<true>(facet, ends) : orderEdges<false>(facet, ends);
        if (!box.numbers) continue;
        if (box.inFront()) {
            const EdgeRows rowsOfBox = activeRows(box.top, -1.0, box.bottom, -1.0, height);
            if (rowsOfBox.first > rowsOfBox.last || box.coversNoColumn(width)) continue;
            if (facet.edgeCount <= slotEdges && rowsOfBox.last - rowsOfBox.first < shortRows
                && shortFacets.size() < mostRuns && addShortFacet(ends, facet.edgeCount, i, rowsOfBox))
                continue;
        }
        if (const int row = firstRow(facet); row < height) entries.push_back({row, i});
    }
    sortEntries(entries);
}

/// Puts the upper end of each edge first, and hands out the ends of the first few.
template <bool plain>
EdgeTable::Box EdgeTable::orderEdges(const Facet& facet, Ends* ends)
{
    Box box;
    for (std::uint32_t i = 0; i < facet.edgeCount; ++i) {
        Edge& edge = edges[facet.firstEdge + i];
        const Point<3>* upper = &projected[edge.from];
        const Point<3>* lower = &projected[edge.to];
        box.add(*upper);
        box.add(*lower);
        if constexpr (!plain) {
            box.addOdd(*upper);
            box.addOdd(*lower);
        }
        if ((*upper)[1] > (*lower)[1]) {
            std::swap(edge.from, edge.to);
            std::swap(upper, lower);
        }
        if (i < slotEdges) ends[i] = {upper, lower};
    }
    return box;
}

/// Adds the runs of a small facet that lies in front of the eye; false, having added none,
/// when one of its rows is not a simple run between two edges.
bool EdgeTable::addShortFacet(const Ends* ends, std::uint32_t edgeCount, std::uint32_t place, EdgeRows rows)
{
    Crossing crossed[shortRows][2];
    unsigned char counts[shortRows] = {};
    for (std::uint32_t i = 0; i < edgeCount; ++i) {
        const Point<3>& upper = *ends[i].upper;
        const Point<3>& lower = *ends[i].lower;
        const EdgeRows rowsOfEdge = activeRows(upper[1], -1.0, lower[1], -1.0, height);
        const Run run{
            upper[0], upper[1], upper[2], lower[0] - upper[0], lower[1] - upper[1], lower[2] - upper[2],
            0,        0,        0};
        for (int y = rowsOfEdge.first; y <= rowsOfEdge.last; ++y) {
            const int row = y - rows.first;
            if (counts[row] == 2) return false;
            crossed[row][counts[row]++] = crossingAt(run, y);
        }
    }
    for (int row = 0; row <= rows.last - rows.first; ++row)
        if (counts[row] == 1) return false;
    for (int row = 0; row <= rows.last - rows.first; ++row) {
        if (counts[row] == 0) continue;
        const Crossing* const two = crossed[row];
        const int left = two[1].x < two[0].x;
        const SpanFill span = spanBetween(place, two[left], two[1 - left], width);
        if (span.first < span.end) shortFacets.add(rows.first + row, span);
    }
    return true;
}

/// The first row that an edge of the facet crosses; `height` when none does.
int EdgeTable::firstRow(const Facet& facet) const noexcept
{
    int first = height;
    Run run;
    for (std::uint32_t i = facet.firstEdge; i < facet.firstEdge + facet.edgeCount; ++i)
        if (makeRun(i, run)) first = std::min(first, run.first);
    return first;
}

/// Facets by their first row, in store order within a row (a counting sort).
void EdgeTable::sortEntries(const std::vector<Entry>& entries)
{
    rowStarts.assign(static_cast<std::size_t>(height) + 1, 0);
    for (const Entry& entry : entries) ++rowStarts[static_cast<std::size_t>(entry.row) + 1];
    for (std::size_t y = 1; y < rowStarts.size(); ++y) rowStarts[y] += rowStarts[y - 1];
    facetsByRow.resize(entries.size());
    std::vector<std::uint32_t> next(rowStarts.begin(), rowStarts.end() - 1);
    for (const Entry& entry : entries) facetsByRow[next[static_cast<std::size_t>(entry.row)]++] = entry.facet;
}

bool EdgeTable::makeRun(std::uint32_t number, Run& run) const noexcept
{
    const Edge& edge = edges[number];
    const Point<3>& upper = projected[edge.from];
    const Point<3>& lower = projected[edge.to];
    const EdgeRows rows = activeRows(upper[1], upper[2], lower[1], lower[2], height);
    if (rows.first > rows.last) return false;
    run = {upper[0],   upper[1],  upper[2], lower[0] - upper[0], lower[1] - upper[1], lower[2] - upper[2],
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
    std::stable_sort(polygon.runs.begin(), polygon.runs.end(),
                     [](const Run& a, const Run& b) { return a.first < b.first; });
}

/// Where the edge crosses row `y`.
Crossing EdgeTable::crossingAt(const Run& run, int y) noexcept
{
    const double t = (y - run.y) / run.dy;
    return {run.x + run.dx * t, run.depth + run.ddepth * t};
}

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
