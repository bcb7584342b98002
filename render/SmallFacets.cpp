#include "render/SmallFacets.h"

namespace belvor {

bool SmallFacets::add(const EdgeEnds* ends, std::uint32_t edgeCount, std::uint32_t facet, EdgeRows rows) const
{
    // 1. Where the edges cross the rows.
    Crossing crossed[maxRows][2];
    unsigned char counts[maxRows] = {};
    for (std::uint32_t i = 0; i < edgeCount; ++i) {
        const EdgeRows rowsOfEdge = activeRows((*ends[i].upper)[1], -1.0, (*ends[i].lower)[1], -1.0, height);
        const ScreenEdge edge(ends[i]);
        for (int y = rowsOfEdge.first; y <= rowsOfEdge.last; ++y) {
            const int row = y - rows.first;
            if (counts[row] == 2) return false;
            crossed[row][counts[row]++] = edge.at(y);
        }
    }
    for (int row = 0; row <= rows.last - rows.first; ++row)
        if (counts[row] == 1) return false;

    // 2. The span between the two crossings of each row.
    for (int row = 0; row <= rows.last - rows.first; ++row) {
        if (counts[row] == 0) continue;
        const Crossing* const two = crossed[row];
        const int left = two[1].x < two[0].x;
        const SpanFill span = spanBetween(facet, two[left], two[1 - left], width);
        if (span.first < span.end) spans.add(rows.first + row, span);
    }
    return true;
}

}   // namespace belvor
