#include "render/Outlines.h"

#include "render/Pauses.h"
#include "scene/Camera.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <new>
#include <unordered_map>
#include <vector>

namespace belvor {
namespace {

constexpr double cosineOf20Degrees = 0.93969262078590838405;
constexpr std::uint32_t none = 0xFFFFFFFF;

/// For every vertex the first one at the same position; none for one that is not finite.
class SamePositions {
public:
    SamePositions(const Model& scene, Pauses& pauses) : model(scene)
    {
        const auto pause = [&pauses] { pauses.step(Pauses::interval); };
        resizeInSlices(firstOf, model.vertexCount(), pause);
        resizeInSlices(table, std::bit_ceil(std::size_t{model.vertexCount()} * 2 + 2), pause, none);
        const std::uint32_t count = model.vertexCount();
        for (std::uint32_t i = 0; i < count; i += blockSize)
            addBlock(i, std::min(i + blockSize, count), pauses);
        table = {};
    }

    std::uint32_t operator[](std::uint32_t vertex) const noexcept { return firstOf[vertex]; }

private:
    static constexpr std::uint32_t blockSize = 32;

    /// What one step reads from anywhere in the table and the model, an earlier one asks for.
    void addBlock(std::uint32_t first, std::uint32_t end, Pauses& pauses)
    {
        std::size_t slots[blockSize];
        for (std::uint32_t i = first; i < end; ++i) {
            slots[i - first] = hash(model.vertex(i).position) & (table.size() - 1);
            __builtin_prefetch(&table[slots[i - first]]);
        }
        for (std::uint32_t i = first; i < end; ++i)
            if (const std::uint32_t found = table[slots[i - first]]; found != none)
                __builtin_prefetch(&model.vertex(found));
        for (std::uint32_t i = first; i < end; ++i) {
            firstOf[i] = firstAt(i, slots[i - first]);
            pauses.step();
        }
    }

    std::uint32_t firstAt(std::uint32_t vertex, std::size_t slot)
    {
        const Point<3>& position = model.vertex(vertex).position;
        if (!std::isfinite(position[0]) || !std::isfinite(position[1]) || !std::isfinite(position[2]))
            return none;
        while (table[slot] != none && !(model.vertex(table[slot]).position == position))
            slot = (slot + 1) & (table.size() - 1);
        if (table[slot] == none) table[slot] = vertex;
        return table[slot];
    }

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

    const Model& model;
    LargeVector<std::uint32_t> firstOf;
    LargeVector<std::uint32_t> table;
};

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

/// Whether any two of three facets and more do. There may be a million of them, but three normals are enough:
/// two of those facets run along the edge in the same direction, so they differ or face opposite sides, and
/// then the third differs from one of them.
bool anyDiffer(const Model& model, std::span<const Outlines::Use> uses)
{
    std::uint32_t count = 0;
    Outlines::Use found[2];
    for (const Outlines::Use use : uses) {
        const Facet& facet = model.facet(use.facet());
        if (facet.material != model.facet(uses[0].facet()).material) return true;
        if (!std::isfinite(facet.plane.normal().length())) continue;   // differs from none
        if (count == 2) return true;
        found[count++] = use;
    }
    return count == 2 && differ(model, found[0], found[1]);
}

}   // namespace

/// Puts the edges of a model together, in store order: each is looked for among the edges met so far that
/// have the same lower end.
class Outlines::Matcher {
public:
    Matcher(Outlines& filled, const Model& scene, const std::function<void()>& pause)
        : result(filled),
          model(scene),
          pauses(pause),
          positions(scene, pauses)
    {
        resizeInSlices(
            newest, scene.vertexCount(), [this] { pauses.step(Pauses::interval); }, none);
        const std::size_t usual = model.edgeCount() / 2 + std::size_t{1};
        result.traitStore.reserve(usual);
        result.outlines.reserve(usual);
        links.reserve(usual);
    }

    void run()
    {
        auto outlined = model.outlinedFacets().begin();
        for (std::uint32_t facet = 0; facet < model.facetCount(); ++facet) {
            const Facet& owner = model.facet(facet);
            hasCurve = outlined != model.outlinedFacets().end() && *outlined == facet;
            if (hasCurve) ++outlined;
            for (std::uint32_t i = owner.firstEdge; i < owner.firstEdge + owner.edgeCount; ++i) {
                const Edge& edge = model.edge(i);
                const std::uint32_t from = positions[edge.from], to = positions[edge.to];
                pauses.step();
                if (from == to || from == none || to == none) continue;
                const bool forward = from < to;
                const Use use{facet << 1 | std::uint32_t{forward}};
                std::uint32_t& index = forward ? find(from, to) : find(to, from);
                if (index == none) index = add(edge, use, forward ? from : to, forward ? to : from);
                else addUse(index, use);
            }
        }
        gatherUses();
    }

private:
    /// Of an outline: its upper end, and the outline before it with the same lower end.
    struct Link {
        std::uint32_t upper, before;
    };
    struct FurtherUse {
        std::uint32_t outline;
        Use use;
    };
    /// Lists do not grow beyond this: what does not fit is found by a map of both ends.
    static constexpr std::uint32_t longestList = 64;

    /// The index of the edge between two ends; `none`, where that of a new one goes.
    std::uint32_t& find(std::uint32_t lower, std::uint32_t upper)
    {
        listLength = 0;
        for (std::uint32_t i = newest[lower]; i != none; i = links[i].before, ++listLength)
            if (links[i].upper == upper) return found = i;
        if (listLength < longestList) return found = none;
        return crowded.emplace(std::uint64_t{lower} << 32 | upper, none).first->second;
    }

    /// Of an edge that find() has just not found.
    std::uint32_t add(const Edge& edge, Use use, std::uint32_t lower, std::uint32_t upper)
    {
        const std::uint32_t index = result.size();
        Traits traits{Kind::border, 1, false, false};
        traits.hasCurve = hasCurve;
        result.traitStore.push_back(traits);
        result.outlines.push_back({edge, {use, {0}}});
        links.push_back({upper, newest[lower]});
        if (listLength < longestList) newest[lower] = index;
        return index;
    }

    /// A facet that has the edge several times comes several times, one after another.
    void addUse(std::uint32_t index, Use use)
    {
        Traits& outline = result.traitStore[index];
        Use* const uses = result.outlines[index].firstUses;
        if (outline.kind == Kind::border) outline.kind = Kind::smooth;
        if (outline.useCount > 2) {
            further.push_back({index, use});
        } else if (const Use last = uses[outline.useCount - 1]; last.facet() != use.facet()) {
            if (outline.useCount == 2) further.push_back({index, use});
            else uses[1] = use;
            outline.useCount = outline.useCount == 1 ? 2 : 3;
            if (outline.useCount == 2 && differ(model, last, use)) outline.kind = Kind::sharp;
            outline.dependsOnView =
                outline.useCount == 2 && outline.kind == Kind::smooth && last.forward() != use.forward();
        }
    }

    /// The uses of edges with three facets and more, side by side.
    void gatherUses()
    {
        const auto byOutline = [](const FurtherUse& a, const FurtherUse& b) { return a.outline < b.outline; };
        std::stable_sort(further.begin(), further.end(), byOutline);
        LargeVector<Use>& store = result.useStore;
        for (auto at = further.begin(); at != further.end();) {
            Traits& outline = result.traitStore[at->outline];
            Use(&uses)[2] = result.outlines[at->outline].firstUses;
            const auto first = static_cast<std::uint32_t>(store.size());
            store.insert(store.end(), uses, uses + 2);
            for (const std::uint32_t index = at->outline; at != further.end() && at->outline == index; ++at)
                if (store.back().facet() != at->use.facet()) store.push_back(at->use);
            const auto count = static_cast<std::uint32_t>(store.size()) - first;
            uses[0] = {first};
            uses[1] = {count};
            if (outline.kind != Kind::sharp && anyDiffer(model, {&store[first], count}))
                outline.kind = Kind::sharp;
        }
    }

    Outlines& result;
    const Model& model;
    Pauses pauses;
    const SamePositions positions;
    LargeVector<std::uint32_t> newest;   // of the edges of each lower end
    LargeVector<Link> links;             // by outline
    std::unordered_map<std::uint64_t, std::uint32_t> crowded;
    std::uint32_t found = none, listLength = 0;   // of the last find()
    bool hasCurve = false;                        // the facet at hand, as its border
    std::vector<FurtherUse> further;              // than the second of an edge
};

Outlines::Outlines(const Model& model, const std::function<void()>& pause)
{
    if (model.facetCount() > none >> 1) throw std::bad_alloc();   // what a Use can name
    Matcher(*this, model, pause).run();
}

/// Without a branch for each: which of them are drawn can hardly be foretold.
std::uint64_t Outlines::mayShow(std::uint32_t first, const FacetShade* shades, bool every) const noexcept
{
    const std::uint32_t count = std::min(groupSize, size() - first);
    if (every) return ~std::uint64_t{0} >> (groupSize - count);
    const Traits* const traits = &traitStore[first];
    const Outline* const edges = &outlines[first];
    std::uint64_t chosen = 0;
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::uint32_t all = traits[i].dependsOnView ? ~0u : 0;
        const bool one = shades[edges[i].firstUses[0].facet() & all].reversed,
                   other = shades[edges[i].firstUses[1].facet() & all].reversed;
        chosen |= static_cast<std::uint64_t>((one != other) | (all == 0)) << i;
    }
    return chosen;
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
