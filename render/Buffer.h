#pragma once

#include "platform/Handle.h"
#include "render/Shading.h"
#include "render/Spans.h"
#include "scene/Model.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace belvor {

/// A facet that is active on the current row.
struct ActiveFacet {
    std::uint32_t facet;           ///< Its index in the store.
    std::uint32_t crossingCount;   ///< At least 1; odd when the eye plane cuts the facet.
    const Crossing* crossings;     ///< By growing x.
};

/// One row of the depth buffer; its sinks take the finished rows of a render. Used by one
/// render, on one thread.
class Buffer : public TSHandlable {
public:
    static constexpr std::uint32_t noFacet = 0xFFFFFFFF;

    /// `width` in pixels, at least 1.
    explicit Buffer(int width);

    /// Takes the facets of `model`, looking as in `shades`, as the owners of the rows to come;
    /// called by a render before its first row. Both must outlive the last row's use.
    void setScene(const Model& model, std::span<const FacetShade> shades) noexcept
    {
        facets = &model;
        looks = shades.data();
    }

    /// Empties the row.
    virtual void clear();

    /// Fills the row from the facets active on it, in any order: the nearer surface keeps
    /// a pixel, and of two equally near ones the later in the store.
    virtual void scanFacets(std::span<const ActiveFacet> active, const Camera& camera);

    /// Offers a span of pixels.
    void fill(const SpanFill& span) noexcept;

    /// Takes the finished row, counted from 0 at the top.
    virtual void lineDone(int row) = 0;

    int width() const noexcept { return rowWidth; }
    /// Index of the nearest facet in the store, or noFacet.
    std::uint32_t owner(int column) const noexcept { return rowOwners[static_cast<std::size_t>(column)]; }
    /// Screen depth; the largest double where no surface is.
    double depth(int column) const noexcept { return rowDepths[static_cast<std::size_t>(column)]; }
    /// The same of every column.
    std::span<const std::uint32_t> owners() const noexcept { return rowOwners; }
    std::span<const double> depths() const noexcept { return rowDepths; }
    /// A facet by its index in the store.
    const Facet& facet(std::uint32_t index) const noexcept { return facets->facet(index); }
    /// Its red, green and blue.
    const std::uint8_t* colour(std::uint32_t index) const noexcept { return looks[index].colour; }

private:
    void scanOpenFacet(const ActiveFacet& active, const Camera& camera) noexcept;

    const Model* facets = nullptr;
    const FacetShade* looks = nullptr;
    int rowWidth;
    std::vector<double> rowDepths;
    std::vector<std::uint32_t> rowOwners;
};

}   // namespace belvor
