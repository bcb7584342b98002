#pragma once

#include "platform/LargeMemory.h"
#include "render/FacetRows.h"
#include "render/RowSpans.h"
#include "render/ScreenBox.h"
#include "render/ScreenEdge.h"
#include "scene/Model.h"

#include <cstdint>

namespace belvor {

class Reporter;

/// The vertices of a model on the screen: pixels right, pixels down, depth.
struct ProjectedVertices {
    LargeVector<Point<3>> points;
    bool allInFront = false;   ///< All are numbers and lie in front of the eye.
};

/// Which facets cross which row of a picture. Facets that cross none are left out; small ones
/// become spans at once; the others are sorted by their first row.
class EdgeTable {
public:
    /// Fills the table for a picture of that size, whatever it held. A facet with a corner that
    /// is not a number is left out. Reports stage 0 from 1/3 to 2/3, every 256 edges. Throws
    /// Reporter::Abandoned, std::bad_alloc; then order() must succeed before the table is read.
    void order(const Model& model, const ProjectedVertices& vertices, int width, int height,
               Reporter& progress);

    /// The small facets, as spans.
    const RowSpans& smallFacets() const noexcept { return spans; }
    /// The other facets.
    const FacetRows& steppedFacets() const noexcept { return rows; }

private:
    RowSpans spans;
    FacetRows rows;
};

}   // namespace belvor
