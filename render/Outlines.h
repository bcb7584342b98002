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
    /// What an edge is for any view.
    struct Traits {
        Kind kind : 2;
        std::uint8_t useCount : 2;   ///< 1, 2 or more.
        bool hasCurve : 1;           ///< Of a border: a curve of the model stands for it.
        bool dependsOnView : 1;   ///< Smooth, with two facets that run along it in opposite directions: drawn
                                  ///< where one faces the eye and the other does not.
    };
    static_assert(sizeof(Traits) == 1);   // those of all edges are read for every picture

    /// Edges whose ends coincide or are not finite are left out. `pause` is called now and then and may
    /// throw. Throws std::bad_alloc.
    explicit Outlines(const Model& model, const std::function<void()>& pause = {});

    std::uint32_t size() const noexcept { return static_cast<std::uint32_t>(traitStore.size()); }
    // Of each, by its index in the order in which the model has them first:
    const Traits& traits(std::uint32_t index) const noexcept { return traitStore[index]; }
    /// The vertices at its ends, as the first of its facets runs.
    const Edge& ends(std::uint32_t index) const noexcept { return outlines[index].ends; }
    std::span<const Use> uses(std::uint32_t index) const noexcept
    {
        const Use(&first)[2] = outlines[index].firstUses;
        const std::uint8_t count = traitStore[index].useCount;
        if (count <= 2) return {first, count};
        return {&useStore[first[0].facetAndDirection], first[1].facetAndDirection};
    }
    bool belongsTo(std::uint32_t index, std::uint32_t facet) const noexcept
    {
        const std::span<const Use> all = uses(index);
        const auto at = std::lower_bound(all.begin(), all.end(), facet,
                                         [](Use use, std::uint32_t wanted) { return use.facet() < wanted; });
        return at != all.end() && at->facet() == facet;
    }

    /// How many mayShow() tells of at once.
    static constexpr std::uint32_t groupSize = 64;
    /// Bit i tells whether pictures from the eye of `shades` may draw the edge `first` + i: `every` one, or
    /// all but smooth ones whose two facets both face the eye or both do not.
    std::uint64_t mayShow(std::uint32_t first, const FacetShade* shades, bool every) const noexcept;

    /// Whether some of its facets face the eye and others do not.
    bool isContour(std::uint32_t index, const Model& model, const Camera& camera,
                   const FacetShade* shades) const;
    /// The facet that colours it: the first whose normal faces the eye, else the first.
    std::uint32_t colouringFacet(std::uint32_t index, const FacetShade* shades) const noexcept;

private:
    class Matcher;

    struct Outline {
        Edge ends;
        Use firstUses[2];   // of one or two facets; of more their place in the store and their number
    };

    LargeVector<Traits> traitStore;
    LargeVector<Outline> outlines;
    LargeVector<Use> useStore;   // of edges with three facets and more
};

}   // namespace belvor
