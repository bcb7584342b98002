#include "render/Outlines.h"

#include "render/Shading.h"
#include "scene/Camera.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <new>

namespace belvor {
namespace {

constexpr double cosineOf20Degrees = 0.93969262078590838405;
constexpr std::uint32_t none = 0xFFFFFFFF;

/// For every vertex the first one at the same position; none for one that is not finite.
class SamePositions {
public:
    explicit SamePositions(const Model& model) : firstOf(model.vertexCount())
    {
        const std::uint32_t count = model.vertexCount();
        const std::size_t size = std::bit_ceil(std::size_t{count} * 2 + 2);
        LargeVector<std::uint32_t> table(size, none);
        for (std::uint32_t i = 0; i < count; ++i) {
            const Point<3>& position = model.vertex(i).position;
            firstOf[i] = none;
            if (!std::isfinite(position[0]) || !std::isfinite(position[1]) || !std::isfinite(position[2]))
                continue;
            std::size_t slot = hash(position) & (size - 1);
            while (table[slot] != none && !(model.vertex(table[slot]).position == position))
                slot = (slot + 1) & (size - 1);
            if (table[slot] == none) table[slot] = i;
            firstOf[i] = table[slot];
        }
    }

    std::uint32_t operator[](std::uint32_t vertex) const noexcept { return firstOf[vertex]; }

private:
    static std::size_t hash(const Point<3>& position) noexcept
    {
        std::uint64_t mixed = 0;
        for (int axis = 0; axis < 3; ++axis) {
            const auto bits = std::bit_cast<std::uint64_t>(position[axis] + 0.0);   // −0 as 0
            mixed = (mixed ^ bits) * 0x9E3779B97F4A7C15u;
            mixed ^= mixed >> 32;
        }
        return static_cast<std::size_t>(mixed);
    }

    LargeVector<std::uint32_t> firstOf;
};

/// The edges of a model that coincide, as chains in store order.
class CoincidingEdges {
public:
    CoincidingEdges(const Model& model, const SamePositions& positions)
        : next(model.edgeCount(), none),
          first(model.edgeCount(), 0)
    {
        // 1. Edges by their lower end (a counting sort: stable, keeps store order).
        LargeVector<std::uint32_t> starts(std::size_t{model.vertexCount()} + 1, 0);
        const auto endsOf = [&](std::uint32_t edge) {
            const std::uint32_t a = positions[model.edge(edge).from], b = positions[model.edge(edge).to];
            return a < b ? std::pair(a, b) : std::pair(b, a);
        };
        const auto isEdge = [](const std::pair<std::uint32_t, std::uint32_t>& ends) {
            return ends.first != ends.second && ends.second != none;
        };
        for (std::uint32_t edge = 0; edge < model.edgeCount(); ++edge)
            if (const auto ends = endsOf(edge); isEdge(ends)) ++starts[ends.first + std::size_t{1}];
        for (std::size_t i = 1; i < starts.size(); ++i) starts[i] += starts[i - 1];
        LargeVector<OtherEnd> byLowerEnd(starts.back());
        for (std::uint32_t edge = 0; edge < model.edgeCount(); ++edge)
            if (const auto ends = endsOf(edge); isEdge(ends))
                byLowerEnd[starts[ends.first]++] = {ends.second, edge};

        // 2. Within those of one lower end, by the other end. Placing has moved each start to the next one's.
        for (std::size_t i = 0, begin = 0; i + 1 < starts.size(); begin = starts[i++])
            linkEqual(byLowerEnd.data() + begin, byLowerEnd.data() + starts[i]);
    }

    bool isFirst(std::uint32_t edge) const noexcept { return first[edge] != 0; }
    std::uint32_t after(std::uint32_t edge) const noexcept { return next[edge]; }

private:
    struct OtherEnd {
        std::uint32_t end, edge;
    };

    void linkEqual(OtherEnd* begin, OtherEnd* end)
    {
        std::sort(begin, end, [](const OtherEnd& a, const OtherEnd& b) {
            return a.end != b.end ? a.end < b.end : a.edge < b.edge;
        });
        for (const OtherEnd* at = begin; at != end; ++at) {
            if (at == begin || at[-1].end != at->end) first[at->edge] = 1;
            else next[at[-1].edge] = at->edge;
        }
    }

    LargeVector<std::uint32_t> next;
    LargeVector<std::uint8_t> first;
};

LargeVector<std::uint32_t> facetsOfEdges(const Model& model)
{
    LargeVector<std::uint32_t> facets(model.edgeCount());
    for (std::uint32_t i = 0; i < model.facetCount(); ++i) {
        const Facet& facet = model.facet(i);
        std::fill_n(facets.begin() + facet.firstEdge, facet.edgeCount, i);
    }
    return facets;
}

/// Whether two facets at one edge differ in material or by more than 20 degrees. Drawings turn
/// normals at random: those of facets that run along the edge in the same direction face
/// different sides, so one of them is negated.
bool differ(const Model& model, Outlines::Use a, Outlines::Use b)
{
    const Facet &one = model.facet(a.facet()), &other = model.facet(b.facet());
    if (one.material != other.material) return true;
    const double cosine = dot(one.plane.normal(), other.plane.normal());
    return (a.forward() == b.forward() ? -cosine : cosine) < cosineOf20Degrees;
}

Outlines::Kind kindOf(const Model& model, std::span<const Outlines::Use> uses, std::uint32_t edges)
{
    if (uses.size() == 1) return edges == 1 ? Outlines::Kind::border : Outlines::Kind::smooth;
    for (std::size_t i = 1; i < uses.size(); ++i)
        for (std::size_t k = 0; k < i; ++k)
            if (differ(model, uses[k], uses[i])) return Outlines::Kind::sharp;
    return Outlines::Kind::smooth;
}

}   // namespace

Outlines::Outlines(const Model& model)
{
    if (model.facetCount() > none >> 1) throw std::bad_alloc();   // what a Use can name
    const SamePositions positions(model);
    const CoincidingEdges coinciding(model, positions);
    const LargeVector<std::uint32_t> facets = facetsOfEdges(model);
    outlines.reserve(model.edgeCount() / 2 + std::size_t{1});
    useStore.reserve(model.edgeCount());
    for (std::uint32_t edge = 0; edge < model.edgeCount(); ++edge) {
        if (!coinciding.isFirst(edge)) continue;
        const auto firstUse = static_cast<std::uint32_t>(useStore.size());
        std::uint32_t count = 0;
        for (std::uint32_t i = edge; i != none; i = coinciding.after(i), ++count) {
            const bool forward = positions[model.edge(i).from] < positions[model.edge(i).to];
            if (useStore.size() == firstUse || useStore.back().facet() != facets[i])
                useStore.push_back({facets[i] << 1 | std::uint32_t{forward}});
        }
        const Kind kind = kindOf(model, {useStore.data() + firstUse, useStore.size() - firstUse}, count);
        outlines.push_back({model.edge(edge).from, model.edge(edge).to, firstUse, kind});
    }
    outlines.push_back({0, 0, static_cast<std::uint32_t>(useStore.size()), Kind::smooth});
    useStore.push_back({0});   // so that uses() of the last one may point behind its last
}

bool Outlines::isContour(std::uint32_t index, const Model& model, const Camera& camera,
                         const FacetShade* shades) const
{
    const std::span<const Use> all = uses(index);
    const bool firstFaces = !shades[all[0].facet()].reversed;
    for (const Use use : all.subspan(1)) {
        const bool faces = use.forward() == all[0].forward() ? camera.faces(-model.facet(use.facet()).plane)
                                                             : !shades[use.facet()].reversed;
        if (faces != firstFaces) return true;
    }
    return false;
}

std::uint32_t Outlines::colouringFacet(std::uint32_t index, const FacetShade* shades) const noexcept
{
    const std::span<const Use> all = uses(index);
    for (const Use use : all)
        if (!shades[use.facet()].reversed) return use.facet();
    return all[0].facet();
}

}   // namespace belvor
