#pragma once

#include "platform/LargeMemory.h"
#include "render/FacetBands.h"
#include "render/FacetRows.h"
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

/// A picture cut into bands of rows, each drawn as a whole.
struct Bands {
    int width, height;   ///< Of the picture.
    int rowBits;         ///< A band has 2^rowBits rows, the last one maybe fewer.

    int rows() const noexcept { return 1 << rowBits; }
    std::size_t count() const noexcept
    {
        return static_cast<std::size_t>(height + rows() - 1) >> static_cast<unsigned>(rowBits);
    }
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
    /// Calls `take` with each other facet whose stepping begins on row `y`.
    template <class Take>
    void forEachFacet(int y, Take take) const
    {
        for (std::size_t i = 0; i < used; ++i) parts[i]->rows.forEach(y, take);
    }

private:
    /// What one thread adds.
    struct Part {
        FacetBands bands;
        FacetRows rows;
    };
    std::vector<std::unique_ptr<Part>> parts;
    std::size_t used = 0;   // by the last call
};

}   // namespace belvor
