#pragma once

#include "platform/LargeMemory.h"
#include "render/Shading.h"
#include "scene/Model.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <span>

namespace belvor {

class Camera;

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
        std::uint32_t from, to;
        Use firstUses[2];        // of one or two; of more their place in the store and their number
        std::uint8_t useCount;   // 1, 2 or more
        Kind kind;
        bool hasCurve;   // of a border: a curve of the model stands for it
        bool hasPair;    // two facets run along it, in opposite directions
    };

    /// Edges whose ends coincide or are not finite are left out. `pause` is called now and then and may
    /// throw. Throws std::bad_alloc.
    explicit Outlines(const Model& model, const std::function<void()>& pause = {});

    std::uint32_t size() const noexcept { return static_cast<std::uint32_t>(outlines.size()); }
    /// In the order in which the model has them first.
    const Outline& operator[](std::uint32_t index) const noexcept { return outlines[index]; }
    std::span<const Use> uses(std::uint32_t index) const noexcept
    {
        const Outline& outline = outlines[index];
        if (outline.useCount <= 2) return {outline.firstUses, outline.useCount};
        return {&useStore[outline.firstUses[0].facetAndDirection], outline.firstUses[1].facetAndDirection};
    }
    bool belongsTo(std::uint32_t index, std::uint32_t facet) const noexcept
    {
        const std::span<const Use> all = uses(index);
        const auto at = std::lower_bound(all.begin(), all.end(), facet,
                                         [](Use use, std::uint32_t wanted) { return use.facet() < wanted; });
        return at != all.end() && at->facet() == facet;
    }

    /// Whether some of its facets face the eye and others do not.
    bool isContour(std::uint32_t index, const Model& model, const Camera& camera,
                   const FacetShade* shades) const
    {
        const Outline& outline = outlines[index];
        if (outline.hasPair)   // nearly always
            return shades[outline.firstUses[0].facet()].reversed
                   != shades[outline.firstUses[1].facet()].reversed;
        if (outline.useCount == 1) return false;
        return hasFacetsOfBothSides(index, model, camera, shades);
    }
    /// The facet that colours it: the first whose normal faces the eye, else the first.
    std::uint32_t colouringFacet(std::uint32_t index, const FacetShade* shades) const noexcept;

private:
    class Matcher;
    bool hasFacetsOfBothSides(std::uint32_t index, const Model& model, const Camera& camera,
                              const FacetShade* shades) const;

    LargeVector<Outline> outlines;
    LargeVector<Use> useStore;   // of edges with three facets and more
};

}   // namespace belvor
