#pragma once

#include "platform/LargeMemory.h"
#include "render/FacetRows.h"
#include "render/RowSpans.h"
#include "render/ScreenBox.h"
#include "render/ScreenEdge.h"
#include "render/Sharing.h"
#include "scene/Model.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace belvor {

/// The vertices of a model on the screen: pixels right, pixels down, depth.
struct ProjectedVertices {
    LargeVector<Point<3>> points;
    bool allInFront = false;   ///< All are numbers and lie in front of the eye.
};

/// Which facets cross which row of a picture. Facets that cross none are left out; small ones
/// become spans at once; the others are sorted by their first row.
class EdgeTable {
public:
    /// Fills the table for a picture of that size, whatever it held, to be walked in bands of
    /// `bandRows` rows. A facet with a corner that
    /// is not a number is left out. Reports stage 0 from 1/3 to 2/3, every 256 edges. Throws
    /// Reporter::Abandoned, std::bad_alloc; then order() must succeed before the table is read.
    void order(const Model& model, const ProjectedVertices& vertices, int width, int height, int bandRows,
               const Sharing& sharing, Reporter& progress);

    /// Calls `take` with each span of the small facets on row `y`.
    template <class Take>
    void forEachSpan(int y, Take take) const
    {
        for (std::size_t i = 0; i < used; ++i) parts[i]->spans.forEach(y, take);
    }
    /// Calls `take` with each other facet whose stepping begins on row `y`.
    template <class Take>
    void forEachFacet(int y, Take take) const
    {
        for (std::size_t i = 0; i < used; ++i) parts[i]->rows.forEach(y, take);
    }

private:
    /// What one thread adds.
    struct Part {
        RowSpans spans;
        FacetRows rows;
    };
    std::vector<std::unique_ptr<Part>> parts;
    std::size_t used = 0;   // by the last call
};

}   // namespace belvor
