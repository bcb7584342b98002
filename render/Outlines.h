#pragma once

#include "platform/LargeMemory.h"
#include "scene/Model.h"

#include <cstdint>
#include <span>

namespace belvor {

class Camera;
struct FacetShade;

/// The edges of a whole model, each once, with the facets that have it. Two edges are one when
/// their end points are equal as numbers, in either order: facets need not share vertices.
/// Constant after construction; any number of renders may use it.
class Outlines {
public:
    enum class Kind : std::uint8_t {
        border,   ///< One facet has it, once.
        sharp,    ///< Between materials, or normals differ by more than 20 degrees.
        smooth    ///< Any other.
    };
    /// A facet at an edge. Uses stand in store order, each facet once.
    struct Use {
        std::uint32_t facetAndDirection;
        std::uint32_t facet() const noexcept { return facetAndDirection >> 1; }
        /// Two facets run along the edge in the same direction when this is equal.
        bool forward() const noexcept { return (facetAndDirection & 1) != 0; }
    };
    /// From vertex `from` to vertex `to`, as the first of its facets runs.
    struct Outline {
        std::uint32_t from, to, firstUse;
        Kind kind;
    };

    /// Edges whose ends coincide or are not finite are left out. Throws std::bad_alloc.
    explicit Outlines(const Model& model);

    std::uint32_t size() const noexcept { return static_cast<std::uint32_t>(outlines.size()) - 1; }
    /// In the order in which the model has them first.
    const Outline& operator[](std::uint32_t index) const noexcept { return outlines[index]; }
    std::span<const Use> uses(std::uint32_t index) const noexcept
    {
        return {&useStore[outlines[index].firstUse], &useStore[outlines[index + 1].firstUse]};
    }
    bool belongsTo(std::uint32_t index, std::uint32_t facet) const noexcept
    {
        for (const Use use : uses(index))
            if (use.facet() == facet) return true;
        return false;
    }

    /// Whether some of its facets face the eye and others do not.
    bool isContour(std::uint32_t index, const Model& model, const Camera& camera,
                   const FacetShade* shades) const;
    /// The facet that colours it: the first whose normal faces the eye, else the first.
    std::uint32_t colouringFacet(std::uint32_t index, const FacetShade* shades) const noexcept;

private:
    LargeVector<Outline> outlines;   // with one behind the last, for its firstUse
    LargeVector<Use> useStore;
};

}   // namespace belvor
