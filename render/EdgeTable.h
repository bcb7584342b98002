#pragma once

#include "render/Buffer.h"
#include "render/RowSpans.h"
#include "scene/Model.h"

#include <cstdint>
#include <span>
#include <vector>

namespace belvor {

class Reporter;

/// The rows 0 to height − 1 on which a projected edge is active: from `first` to `last`,
/// none when first > last.
struct EdgeRows {
    int first, last;
};

/// Where an edge with its upper end at (y0, z0) and its lower end at (y1, z1) is active,
/// y0 <= y1: strictly below its upper end, down to its lower end, and only in front of the
/// eye (z < 0): a part behind the eye's plane comes out as running off the picture on the
/// other side. A horizontal edge is never active.
EdgeRows activeRows(double y0, double z0, double y1, double z1, int height) noexcept;

/// Which facets, and which of their edges, cross which row of the picture. Facets of a few
/// edges and a few rows, the most of a large model, become runs of pixels at once, while
/// their corners are at hand; the others are stepped row by row. The rows are walked from
/// the top once.
class EdgeTable {
public:
    /// Swaps the ends of edges where needed so that the upper one is `from`. Reports stage
    /// 0 from 1/3 on, every 256 edges. A facet with a corner that is not a number is left
    /// out. `projected` are the vertices on the screen, `plain` when all of them are numbers
    /// in front of the eye; `spans` is memory to work in, whatever it holds. All four must
    /// outlive the table.
    EdgeTable(const LargeVector<Point<3>>& projected, bool plain, BlockStore<Edge>& edges,
              const BlockStore<Facet>& facets, int width, int height, RowSpans& spans, Reporter& progress);

    /// Offers the runs of row `y` that are ready made.
    void fillShortFacets(int y, Buffer& buffer) const
    {
        shortFacets.forEach(y, [&buffer](const SpanFill& span) { buffer.fill(span); });
    }

    /// The other facets active on row `y`, valid until the next call; to be called for every
    /// row from 0 on. A facet's crossings are sorted by x; among equal x they stand in the
    /// order of linked lists whose edges are pushed at the head on every row, so that a
    /// concave facet pairs touching corners the same way always.
    std::span<const ActiveFacet> row(int y);

private:
    static constexpr std::uint32_t slotEdges = 4;
    static constexpr int shortRows = 8;

    /// An edge with its active rows, ready to be stepped.
    struct Run {
        double x, y, depth;      // of the upper end
        double dx, dy, ddepth;   // from the upper end to the lower
        int first, last;
        std::uint32_t edge;
    };
    /// A crossing before it is sorted.
    struct Hit {
        Crossing crossing;
        const Run* run;
    };
    /// An active facet of few edges.
    struct Slot {
        std::uint32_t facet, runCount;
        int last;
        Run runs[slotEdges];
    };
    /// An active facet of many edges: those still to come lie in the order of their first rows.
    struct Polygon {
        std::uint32_t facet = 0;
        std::size_t next = 0;
        std::vector<Run> runs;
        std::vector<const Run*> live;
    };
    /// A facet to be stepped, with its first row.
    struct Entry {
        int row;
        std::uint32_t facet;
    };
    /// An edge's two ends on the screen.
    struct Ends {
        const Point<3>*upper, *lower;
    };
    struct Box;

    template <bool plain>
    Box orderEdges(const Facet& facet, Ends* ends);
    bool addShortFacet(const Ends* ends, std::uint32_t edgeCount, std::uint32_t place, EdgeRows rows);
    int firstRow(const Facet& facet) const noexcept;
    void sortEntries(const std::vector<Entry>& entries);
    bool makeRun(std::uint32_t edge, Run& run) const noexcept;
    static Crossing crossingAt(const Run& run, int y) noexcept;
    void enter(std::uint32_t facet, int y);
    void enterPolygon(const Facet& facet, std::uint32_t place);
    void cross(const Slot& slot, int y);
    bool cross(Polygon& polygon, int y);
    void addSorted(std::uint32_t facet, int y);

    const LargeVector<Point<3>>& projected;
    BlockStore<Edge>& edges;
    const BlockStore<Facet>& facets;
    const int width, height;

    RowSpans& shortFacets;

    std::vector<std::uint32_t> rowStarts;   // of each row, in facetsByRow
    std::vector<std::uint32_t> facetsByRow;

    std::vector<Slot> slots;
    std::vector<std::uint32_t> freeSlots, activeSlots;
    std::vector<Polygon> polygons;

    std::vector<Hit> hits;
    std::vector<Crossing> crossings;
    std::vector<ActiveFacet> active;
};

}   // namespace belvor
