#pragma once

#include "render/Buffer.h"
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

/// Which facets, and which of their edges, cross which row of the picture. Walks the rows
/// from the top once. A row's crossings of one facet are sorted by x; among equal x they
/// stand in the order of linked lists whose edges are pushed at the head on every row, so
/// that a concave facet pairs touching corners the same way always.
class EdgeTable {
public:
    /// Swaps the ends of edges where needed so that the upper one is `from`. Reports stage
    /// 0 from 1/3 on, every 256 edges. A facet with a corner that is not a number is left
    /// out. The stores must outlive the table.
    EdgeTable(const BlockStore<Vertex>& vertices, BlockStore<Edge>& edges, const BlockStore<Facet>& facets, int width,
              int height, Reporter& progress);

    /// The facets active on row `y`, valid until the next call. To be called for every row
    /// from 0 on.
    std::span<const ActiveFacet> row(int y);

private:
    static constexpr std::uint32_t slotEdges = 4;

    /// An edge with its active rows, ready to be stepped.
    struct Run {
        double x, y, depth;            // of the upper end
        double dx, dy, ddepth;         // from the upper end to the lower
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

    std::uint32_t orderFacetEdges(const Facet& facet, int width);
    bool makeRun(std::uint32_t edge, Run& run) const noexcept;
    void enter(std::uint32_t facet, int y);
    void enterPolygon(const Facet& facet, std::uint32_t place);
    void cross(const Slot& slot, int y);
    bool cross(Polygon& polygon, int y);
    void addSorted(std::uint32_t facet, int y);

    const BlockStore<Vertex>& vertices;
    BlockStore<Edge>& edges;
    const BlockStore<Facet>& facets;
    const int height;

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
