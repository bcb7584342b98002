#pragma once

#include "platform/LargeMemory.h"
#include "render/BandLists.h"
#include "render/Bands.h"
#include "render/FacetRows.h"
#include "render/Sharing.h"
#include "render/SimpleFacet.h"
#include "scene/Model.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace belvor {

/// The vertices of a model on the screen: pixels right, pixels down, depth.
struct ProjectedVertices {
    LargeVector<Point<3>> points;
    LargeVector<std::uint32_t> cells;   ///< Of each; see ScreenCells.
    bool allInFront = false;            ///< All are numbers and lie in front of the eye.
    bool hasCells = false;              ///< They do, and cells can be looked at.
};

/// Which facets cross which row of a picture. Facets that cross none are left out; simple ones that
/// reach into a few bands stand in the lists of these; the others are sorted by their first row.
class EdgeTable {
public:
    /// Fills the table, whatever it held. A facet with a corner that
    /// is not a number is left out. Reports stage 0 from 1/3 to 2/3, every 256 edges. Throws
    /// Reporter::Abandoned, std::bad_alloc; then order() must succeed before the table is read.
    void order(const Model& model, const ProjectedVertices& vertices, const Bands& bands,
               const Sharing& sharing, Reporter& progress);

    /// Calls `take` with each run of simple facets that reach into a band.
    template <class Take>
    void forEachRun(std::size_t band, Take take) const
    {
        for (std::size_t i = 0; i < used; ++i) parts[i]->bands.forEachRun(band, take);
    }
    /// Calls `take` with each other facet whose first row is `y`.
    template <class Take>
    void forEachFacet(int y, Take take) const
    {
        for (std::size_t i = 0; i < used; ++i) parts[i]->rows.forEach(y, take);
    }
    /// Calls `take` with each other facet that crosses the first row drawn with a band and rows above it.
    template <class Take>
    void forEachFromAbove(std::size_t band, Take take) const
    {
        for (std::size_t i = 0; i < used; ++i) parts[i]->rows.forEachFromAbove(band, take);
    }

private:
    /// What one thread adds.
    struct Part {
        BandLists<SimpleFacet> bands;
        FacetRows rows;
    };
    std::vector<std::unique_ptr<Part>> parts;
    std::size_t used = 0;   // by the last call
};

}   // namespace belvor
