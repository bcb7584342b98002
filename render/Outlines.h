#pragma once

#include "platform/LargeMemory.h"
#include "platform/Prefetch.h"
#include "render/Shading.h"
#include "scene/Model.h"

#include <algorithm>
#include <array>
#include <bit>
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
    /// A facet at an edge. Uses stand in store order, each facet once.
    struct Use {
        std::uint32_t facetAndDirection;
        std::uint32_t facet() const noexcept { return facetAndDirection >> 1; }
        /// Two facets run along the edge in the same direction when this is equal.
        bool forward() const noexcept { return (facetAndDirection & 1) != 0; }
    };
    static constexpr std::uint32_t groupSize = 64;

    /// Edges whose ends coincide or are not finite are left out. `pause` is called now and then, on the
    /// calling thread, and may throw. Throws std::bad_alloc.
    explicit Outlines(const Model& model, const std::function<void()>& pause = {});

    std::uint32_t size() const noexcept { return static_cast<std::uint32_t>(endStore.size()); }
    std::uint32_t groupCount() const noexcept { return static_cast<std::uint32_t>(groups.size()); }
    // Of each, by its index in the order in which the model has them first:
    /// The first vertices at the positions of its ends, as the first of its facets runs.
    const Edge& ends(std::uint32_t index) const noexcept { return endStore[index]; }
    /// The first two facets, or the only one twice.
    using Pair = std::array<Use, 2>;
    const Pair& firstUses(std::uint32_t index) const noexcept { return pairs[index]; }
    std::span<const Use> uses(std::uint32_t index) const noexcept
    {
        const Group& group = groups[index / groupSize];
        const std::uint64_t bit = std::uint64_t{1} << index % groupSize;
        if ((group.many & bit) == 0) return std::span(pairs[index]).first(isSingle(pairs[index]) ? 1 : 2);
        const auto number =
            group.manyBefore + static_cast<std::uint32_t>(std::popcount(group.many & (bit - 1)));
        return {&useStore[manyStarts[number]], manyStarts[number + 1] - manyStarts[number]};
    }
    bool belongsTo(std::uint32_t index, std::uint32_t facet) const noexcept
    {
        const std::span<const Use> all = uses(index);
        const auto at = std::lower_bound(all.begin(), all.end(), facet,
                                         [](Use use, std::uint32_t wanted) { return use.facet() < wanted; });
        return at != all.end() && at->facet() == facet;
    }

    /// A picture and what it shows.
    struct View {
        const Model& model;
        const Camera& camera;
        const FacetShade* shades;
        bool everyEdge;    ///< Also smooth ones that are no contours.
        bool withCurves;   ///< Which stand for borders of their facets.
    };
    /// Which edges of a group a picture shows, a bit for each.
    struct Chosen {
        std::uint64_t all, freeStanding,
            many;   ///< All; borders and contours; those of three facets and more.
    };
    Chosen choose(std::uint32_t number, const View& view) const;
    /// Gets from memory what is asked of the edges of a group, if there is one of that number.
    void fetch(std::uint32_t number) const noexcept
    {
        if (number >= groupCount()) return;
        for (std::size_t i = 0; i < groupSize; i += 64 / sizeof(Pair)) {
            const std::size_t index = number * std::size_t{groupSize} + i;
            prefetch(&pairs.data()[index]);
            prefetch(&endStore.data()[index]);
        }
    }

    /// The facet that colours it: the first whose normal faces the eye, else the first.
    std::uint32_t colouringFacet(std::uint32_t index, const FacetShade* shades) const noexcept;

private:
    class Matcher;

    /// What the edges of a group are for any view, a bit for each.
    struct Group {
        std::uint64_t borders = 0;      ///< One facet has it, once.
        std::uint64_t sharp = 0;        ///< Between materials, or normals differ by more than 20 degrees.
        std::uint64_t opposite = 0;     ///< Two facets, which run along it in opposite directions.
        std::uint64_t examined = 0;     ///< Two that run in the same one, or more.
        std::uint64_t many = 0;         ///< Three and more.
        std::uint64_t curved = 0;       ///< If it is a border, a curve of the model stands for it.
        std::uint32_t manyBefore = 0;   ///< How many edges of earlier groups have three facets and more.
    };

    std::uint64_t facesDiffer(std::uint32_t number, const FacetShade* shades) const noexcept;
    bool isContour(std::uint32_t index, const View& view) const;
    static bool isSingle(const Pair& pair) noexcept { return pair[0].facet() == pair[1].facet(); }

    // Apart, since each picture reads only some of them of most edges.
    UnsetVector<Edge> endStore;
    UnsetVector<Pair> pairs;
    LargeVector<Group> groups;
    LargeVector<Use> useStore;               // of edges with three facets and more, one after another
    LargeVector<std::uint32_t> manyStarts;   // where those of each begin, and the end
};

}   // namespace belvor
