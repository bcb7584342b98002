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

/// For every vertex the first one at the same position; none for one that is not finite. Vertices whose hash
/// no other one has need not be looked for in a table: where facets share vertices that is nearly all of
/// them.
class SamePositions {
public:
    SamePositions(const Model& scene, Pauses& counted) : model(scene), pauses(counted)
    {
        const auto pause = [this] { pauses.step(Pauses::interval); };
        const std::uint32_t count = model.vertexCount();
        resizeInSlices(firstOf, count, pause);
        resizeInSlices(places, std::bit_ceil(std::size_t{count} / 2 + 1), pause);
        std::uint32_t inTable = count;
        if (const std::uint32_t repeated = noteHashes(); repeated <= count / rarelyRepeated)
            inTable = 2 * repeated;
        else places = {};
        resizeInSlices(table, std::bit_ceil(2 * std::size_t{inTable} + 2), pause, none);
        for (std::uint32_t i = 0; i < count; i += blockSize) findBlock(i, std::min(i + blockSize, count));
        places = {};
        table = {};
    }

    std::uint32_t operator[](std::uint32_t vertex) const noexcept { return firstOf[vertex]; }

private:
    static constexpr std::uint32_t blockSize = 32, placesOfWord = 32, rarelyRepeated = 8;

    /// Leaves the hash of each vertex in firstOf and what is known of it in two bits of its place: one vertex
    /// has it, more than one have it. Returns how many vertices have that of an earlier one; ends when these
    /// are too many.
    std::uint32_t noteHashes()
    {
        std::uint32_t repeated = 0;
        for (std::uint32_t i = 0; i < firstOf.size(); ++i) {
            pauses.step();
            if (i % 8192 == 8191 && repeated > i / rarelyRepeated) return none;
            const std::uint32_t hashed = firstOf[i] = hash(model.vertex(i).position);
            if (hashed == none) continue;
            std::uint64_t& word = places[hashed / placesOfWord & (places.size() - 1)];
            const std::uint32_t shift = hashed % placesOfWord * 2;
            const std::uint64_t met = word >> shift & 1;
            word |= (1 | met << 1) << shift;
            repeated += static_cast<std::uint32_t>(met);
        }
        return repeated;
    }
    bool isRepeated(std::uint32_t hashed) const noexcept
    {
        const std::uint64_t word = places[hashed / placesOfWord & (places.size() - 1)];
        return (word >> (hashed % placesOfWord * 2) & 2) != 0;
    }

    /// What one step reads from anywhere in the table and the model, an earlier one asks for.
    void findBlock(std::uint32_t first, std::uint32_t end)
    {
        std::uint32_t asked[blockSize], count = 0;
        std::size_t slots[blockSize];
        for (std::uint32_t i = first; i < end; ++i) {
            const std::uint32_t hashed = places.empty() ? hash(model.vertex(i).position) : firstOf[i];
            firstOf[i] = hashed == none ? none : i;
            asked[count] = i;
            slots[count] = hashed & (table.size() - 1);
            count += hashed != none && (places.empty() || isRepeated(hashed));
        }
        pauses.step(blockSize / 4 + count);
        for (std::uint32_t k = 0; k < count; ++k) __builtin_prefetch(&table[slots[k]]);
        for (std::uint32_t k = 0; k < count; ++k)
            if (const std::uint32_t found = table[slots[k]]; found != none)
                __builtin_prefetch(&model.vertex(found));
        for (std::uint32_t k = 0; k < count; ++k) firstOf[asked[k]] = firstAt(asked[k], slots[k]);
    }

    std::uint32_t firstAt(std::uint32_t vertex, std::size_t slot)
    {
        const Point<3>& position = model.vertex(vertex).position;
        while (table[slot] != none && !(model.vertex(table[slot]).position == position))
            slot = (slot + 1) & (table.size() - 1);
        if (table[slot] == none) table[slot] = vertex;
        return table[slot];
    }

    /// Less than 2^31; none for a position that is not finite.
    static std::uint32_t hash(const Point<3>& position) noexcept
    {
        std::uint64_t mixed = 0;
        for (int axis = 0; axis < 3; ++axis) {
            if (!std::isfinite(position[axis])) return none;
            const auto bits = std::bit_cast<std::uint64_t>(position[axis] + 0.0);   // −0 as 0
            mixed = (mixed ^ bits) * 0x9E3779B97F4A7C15u;
            mixed ^= mixed >> 32;
        }
        return static_cast<std::uint32_t>(mixed) >> 1;
    }

    const Model& model;
    Pauses& pauses;
    LargeVector<std::uint32_t> firstOf;
    LargeVector<std::uint64_t> places;   // empty when hashes repeat too often
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
            newest, model.vertexCount(), [this] { pauses.step(Pauses::interval); }, none);
        // More than the half that a closed surface has: growing copies all.
        const std::size_t usual = model.edgeCount() / 2 + model.edgeCount() / 16 + std::size_t{1};
        result.endStore.reserve(usual);
        result.pairs.reserve(usual);
        before.reserve(usual);
    }

    void match()
    {
        auto outlined = model.outlinedFacets().begin();
        std::uint32_t edge = 0;   // the first one of the facet at hand: they follow one another
        for (std::uint32_t facet = 0; facet < model.facetCount(); ++facet) {
            hasCurve = outlined != model.outlinedFacets().end() && *outlined == facet;
            if (hasCurve) ++outlined;
            std::uint32_t count = *model.edgeCounts(facet, 1);
            if (count == Model::manyEdges) count = model.facet(facet).edgeCount;
            const Edge* const sides = count == 0 ? nullptr : model.edgesFrom(edge, count);
            for (std::uint32_t i = 0; i < count; ++i) meet(sides ? sides[i] : model.edge(edge + i), facet);
            edge += count;
        }
    }

    /// What the edges are for any view.
    void classify(const Sharing& sharing, const std::function<void()>& pause)
    {
        const std::size_t groupsOfPiece = std::max<std::size_t>(sharing.pieceSize / 16, 1);
        const std::size_t count = (result.size() + std::size_t{groupSize - 1}) / groupSize;
        resizeInSlices(result.groups, count, [this] { pauses.step(Pauses::interval); });
        Workers::ofProcess().forPieces(sharing.threads, count, groupsOfPiece,
                                       [&](std::size_t first, std::size_t end, const Workers::Turn& turn) {
                                           if (turn.thread == 0 && pause) pause();
                                           for (std::size_t i = first; i < end; ++i)
                                               result.groups[i] = groupOf(i * groupSize);
                                       });
        for (const std::uint32_t index : twice) groupWith(index).borders &= ~bitOf(index);
        for (const std::uint32_t index : curved) groupWith(index).curved |= bitOf(index);
        gatherUses();
    }

private:
    struct FurtherUse {
        std::uint32_t outline;
        Use use;
    };
    /// Lists do not grow beyond this: what does not fit is found by a map of both ends.
    static constexpr std::uint32_t longestList = 64;

    Group& groupWith(std::uint32_t index) const noexcept { return result.groups[index / groupSize]; }
    static std::uint64_t bitOf(std::uint32_t index) noexcept { return std::uint64_t{1} << index % groupSize; }

    /// A side of a facet is a new edge, or one more use of an edge met before.
    void meet(const Edge& side, std::uint32_t facet)
    {
        pauses.step();
        const Edge ends{positions[side.from], positions[side.to]};
        if (ends.from == ends.to || ends.from == none || ends.to == none) return;
        const bool forward = ends.from < ends.to;
        const std::uint32_t lower = forward ? ends.from : ends.to, both = ends.from ^ ends.to;
        const Use use{facet << 1 | std::uint32_t{forward}};
        const Edge* const known = result.endStore.data();
        std::uint32_t length = 0;
        for (std::uint32_t i = newest[lower]; i != none; i = before[i], ++length)
            if ((known[i].from ^ known[i].to) == both) return addUse(i, use);
        if (length < longestList) {
            before.push_back(newest[lower]);
            newest[lower] = add(ends, use);
            return;
        }
        const auto [at, isNew] =
            crowded.try_emplace(std::uint64_t{lower} << 32 | (lower ^ both), result.size());
        if (!isNew) return addUse(at->second, use);
        before.push_back(none);
        add(ends, use);
    }

    std::uint32_t add(const Edge& ends, Use use)
    {
        const std::uint32_t index = result.size();
        result.endStore.push_back(ends);
        result.pairs.push_back({use, use});
        if (hasCurve) curved.push_back(index);
        return index;
    }

    /// A facet that has the edge several times comes several times, one after another.
    void addUse(std::uint32_t index, Use use)
    {
        Pair& pair = result.pairs[index];
        if (isSingle(pair)) {
            if (use.facet() == pair[0].facet()) twice.push_back(index);
            else pair[1] = use;
        } else if (use.facet() != pair[1].facet()) {
            further.push_back({index, use});
        }
    }

    /// Of edges from `first` on, as if none had more than two facets.
    Group groupOf(std::size_t first) const noexcept
    {
        const std::size_t count = std::min<std::size_t>(groupSize, result.size() - first);
        const Pair* const uses = &result.pairs[first];
        for (std::size_t i = 0; i < count; ++i) __builtin_prefetch(&model.facet(uses[i][1].facet()));
        Group group;
        for (std::size_t i = 0; i < count; ++i) {
            const auto [one, other] = uses[i];
            const std::uint64_t bit = std::uint64_t{1} << i;
            if (one.facet() == other.facet()) {
                group.borders |= bit;
                continue;
            }
            (one.forward() == other.forward() ? group.examined : group.opposite) |= bit;
            if (differ(model, one, other)) group.sharp |= bit;
        }
        return group;
    }

    /// The uses of edges with three facets and more, side by side.
    void gatherUses()
    {
        const auto byOutline = [](const FurtherUse& a, const FurtherUse& b) { return a.outline < b.outline; };
        std::stable_sort(further.begin(), further.end(), byOutline);
        LargeVector<Use>& store = result.useStore;
        for (auto at = further.begin(); at != further.end();) {
            const std::uint32_t index = at->outline;
            const std::size_t first = store.size();
            result.manyStarts.push_back(static_cast<std::uint32_t>(first));
            store.insert(store.end(), result.pairs[index].begin(), result.pairs[index].end());
            for (; at != further.end() && at->outline == index; ++at)
                if (store.back().facet() != at->use.facet()) store.push_back(at->use);
            Group& group = groupWith(index);
            const std::uint64_t bit = bitOf(index);
            group.many |= bit;
            group.examined |= bit;
            group.opposite &= ~bit;
            if (anyDiffer(model, std::span(store).subspan(first))) group.sharp |= bit;
        }
        result.manyStarts.push_back(static_cast<std::uint32_t>(store.size()));
        std::uint32_t countOfMany = 0;
        for (Group& group : result.groups) {
            group.manyBefore = countOfMany;
            countOfMany += static_cast<std::uint32_t>(std::popcount(group.many));
        }
    }

    Outlines& result;
    const Model& model;
    Pauses pauses;
    SamePositions positions;
    LargeVector<std::uint32_t> newest;   // of the edges of each lower end
    LargeVector<std::uint32_t> before;   // by outline: the one before it with the same lower end
    std::unordered_map<std::uint64_t, std::uint32_t> crowded;
    bool hasCurve = false;   // the facet at hand, as its border
    std::vector<std::uint32_t> twice,
        curved;                        // edges that one facet has several times; of facets with curves
    std::vector<FurtherUse> further;   // than the second of an edge
};

Outlines::Outlines(const Model& model, const std::function<void()>& pause, const Sharing& sharing)
{
    if (model.facetCount() > none >> 1) throw std::bad_alloc();   // what a Use can name
    Matcher matcher(*this, model, pause);
    matcher.match();
    matcher.classify(sharing, pause);
}

Outlines::Chosen Outlines::choose(std::uint32_t number, const View& view) const
{
    const Group& group = groups[number];
    const std::uint32_t first = number * groupSize, count = std::min(groupSize, size() - first);
    std::uint64_t contours = group.opposite & facesDiffer(number, view.shades);
    for (std::uint64_t left = group.examined; left != 0; left &= left - 1) {
        const auto i = static_cast<std::uint32_t>(std::countr_zero(left));
        if (isContour(first + i, view)) contours |= std::uint64_t{1} << i;
    }
    const std::uint64_t freeStanding = group.borders | contours,
                        every = view.everyEdge ? ~std::uint64_t{0} >> (groupSize - count) : 0,
                        curves = view.withCurves ? group.borders & group.curved : 0;
    return {(freeStanding | group.sharp | every) & ~curves, freeStanding, group.many};
}

/// Bit i tells whether of the first two facets of edge i one faces the eye and the other does not. Without a
/// branch for each: that can hardly be foretold.
std::uint64_t Outlines::facesDiffer(std::uint32_t number, const FacetShade* shades) const noexcept
{
    const std::uint32_t first = number * groupSize, count = std::min(groupSize, size() - first);
    const Pair* const group = &pairs[first];
    std::uint64_t differ = 0;
    for (std::uint32_t i = 0; i < count; ++i) {
        const auto one = static_cast<std::uint64_t>(shades[group[i][0].facet()].reversed),
                   other = static_cast<std::uint64_t>(shades[group[i][1].facet()].reversed);
        differ |= (one ^ other) << i;
    }
    return differ;
}

/// Whether some of its facets face the eye and others do not.
bool Outlines::isContour(std::uint32_t index, const View& view) const
{
    const std::span<const Use> all = uses(index);
    const bool firstFaces = !view.shades[all[0].facet()].reversed;
    for (const Use use : all.subspan(1)) {
        const bool faces = use.forward() == all[0].forward()
                               ? view.camera.faces(-view.model.facet(use.facet()).plane)
                               : !view.shades[use.facet()].reversed;
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
