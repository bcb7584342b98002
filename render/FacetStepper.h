#pragma once

#include "render/Pauses.h"
#include "render/PixelRow.h"
#include "render/ScreenEdge.h"
#include "scene/Model.h"

#include <cstdint>
#include <span>
#include <vector>

namespace belvor {

/// Steps facets from row to row: which of them are active on a row, and where their edges cross
/// it. The rows of a picture, or of a part of it, are walked from the top once.
class FacetStepper {
public:
    /// Makes ready for any row of a picture of `height` rows, whatever the stepper held.
    /// `projected` are the vertices on the screen; all must outlive the last row(). What a pause throws is
    /// passed on by the other operations; then only this one may be called.
    void restart(const Model& model, const Point<3>* projected, int height, Pauses& pauses) noexcept;

    /// Adds a facet that is active on the row to come and not on the one before, or at all when
    /// no row has been asked for. Throws std::bad_alloc.
    void enter(std::uint32_t facet);

    /// The facets active on row `y`, valid until the next call; to be called for one row after
    /// the other. A facet's crossings are sorted by x;
    /// among equal x they stand in the order of linked lists whose edges are pushed at the head
    /// on every row, so that a concave facet pairs touching corners the same way always.
    /// Throws std::bad_alloc.
    std::span<const ActiveFacet> row(int y);

private:
    static constexpr std::uint32_t slotEdges = 4;

    /// An edge with its active rows.
    struct SteppedEdge {
        ScreenEdge line;
        int first, last;
        std::uint32_t index;   // in the model
    };
    /// A crossing before it is sorted.
    struct FoundCrossing {
        Crossing crossing;
        const SteppedEdge* edge;
    };
    /// An active facet of few edges.
    struct Slot {
        std::uint32_t facet, edgeCount;
        int last;
        SteppedEdge edges[slotEdges];
    };
    /// An active facet of many edges: those still to come stand in the order of their first rows.
    struct Polygon {
        std::uint32_t facet = 0;
        std::size_t next = 0;
        std::vector<SteppedEdge> edges;
        std::vector<const SteppedEdge*> live;
    };

    bool makeEdge(std::uint32_t index, SteppedEdge& edge) const noexcept;
    void enterPolygon(const Facet& facet, std::uint32_t index);
    void cross(const Slot& slot, int y);
    bool cross(Polygon& polygon, int y);
    void addSorted(std::uint32_t facet, int y);

    const Model* model = nullptr;
    const Point<3>* projected = nullptr;
    int height = 0;
    Pauses* pauses = nullptr;

    std::vector<Slot> slots;
    std::vector<std::uint32_t> freeSlots, activeSlots;
    std::vector<Polygon> polygons;

    std::vector<FoundCrossing> found;   // of the facet at hand
    std::vector<Crossing> crossings;    // of the row
    std::vector<ActiveFacet> active;
};

}   // namespace belvor
