#pragma once

#include "platform/Handle.h"
#include "scene/Model.h"

#include <cstdint>
#include <vector>

namespace belvor {

/// One side of a facet where it crosses the current row.
struct Crossing {
    double x;       ///< Pixels.
    double depth;   ///< Screen depth there.
};

/// A facet that is active on the current row, with its crossings in list order: the order
/// in which crossings of equal x count.
struct ActiveFacet {
    std::uint32_t facet;   ///< Its place in the store.
    std::uint32_t crossingCount;
    const Crossing* crossings;
};

/// One row of the depth buffer; its sinks take the finished rows of a render. Used by one
/// render, on one thread.
class Buffer : public TSHandlable {
public:
    static constexpr std::uint32_t noFacet = 0xFFFFFFFF;

    /// `width` in pixels, at least 1.
    explicit Buffer(int width);

    /// Takes the facets of `model` as the owners of the rows to come; called once by a
    /// render before its first row.
    void setModel(const Model& model) noexcept { facets = &model; }

    /// Empties the row.
    virtual void clear();

    /// Takes the finished row, counted from 0 at the top.
    virtual void lineDone(int row) = 0;

    int width() const noexcept { return rowWidth; }

    /// Offers the pixels between two crossings of `facet`; the nearer surface keeps a pixel,
    /// and of two equally near ones the later in the store.
    void fillSpan(std::uint32_t facet, const Crossing& left, const Crossing& right) noexcept;
    /// Offers the columns `first` to `end` − 1, the depth growing by `step` a pixel.
    void fill(std::uint32_t facet, int first, int end, double depth, double step) noexcept;

    /// Whether a surface covers the pixel.
    bool covered(int column) const noexcept { return owners[static_cast<std::size_t>(column)] != noFacet; }
    /// The facet's place in the store, or noFacet.
    std::uint32_t owner(int column) const noexcept { return owners[static_cast<std::size_t>(column)]; }
    /// Screen depth of a covered pixel.
    double depth(int column) const noexcept { return depths[static_cast<std::size_t>(column)]; }
    const Facet& facet(int column) const noexcept { return facets->facet(owner(column)); }

protected:
    const Model* facets = nullptr;
    int rowWidth;
    std::vector<double> depths;
    std::vector<std::uint32_t> owners;
};

}   // namespace belvor
