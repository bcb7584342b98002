#include "render/Outlines.h"

#include "render/Pauses.h"
#include "render/SamePositions.h"
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
constexpr std::uint32_t none = SamePositions::none;

/// Whether two facets at one edge differ in material or by more than 20 degrees. Drawings turn
/// normals at random: those of facets that run along the edge in the same direction face
/// different sides, so one of them is negated.
bool differ(const Facet& one, const Facet& other, bool sameDirection)
{
    const double cosine = dot(one.plane.normal(), other.plane.normal());
    return one.material != other.material || (sameDirection ? -cosine : cosine) < cosineOf20Degrees;
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
    return count == 2
           && differ(model.facet(found[0].facet()), model.facet(found[1].facet()),
                     found[0].forward() == found[1].forward());
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
        // There are at most as many; what is not used takes no memory.
        result.endStore.resize(model.edgeCount());
        result.pairs.resize(model.edgeCount());
        before.resize(model.edgeCount());
        kinds.resize(model.edgeCount() + std::size_t{groupSize});
    }

    void match()
    {
        constexpr std::uint32_t ahead = 32;   // facets, of which each is read as it comes
        Tables tables{positions.data(), result.endStore.data(), result.pairs.data(),
                      before.data(),    newest.data(),          kinds.data()};
        auto outlined = model.outlinedFacets().begin();
        std::uint32_t edge = 0;   // the first one of the facet at hand: they follow one another
        for (std::uint32_t number = 0; number < model.facetCount(); ++number) {
            const Facet& facet = model.facet(number);
            if (ahead < model.facetCount() - number) prefetch(&model.facet(number + ahead));
            const bool hasCurve = outlined != model.outlinedFacets().end() && *outlined == number;
            if (hasCurve) ++outlined;
            // The facet itself comes from memory later than these.
            std::uint32_t count = *model.edgeCounts(number, 1);
            if (count == Model::manyEdges) count = facet.edgeCount;
            const Edge* const sides = count == 0 ? nullptr : model.edgesFrom(edge, count);
            for (std::uint32_t i = 0; i < count; ++i) {
                pauses.step();
                const Edge side = sides ? sides[i] : model.edge(edge + i);
                meet(tables, {tables.firstOf[side.from], tables.firstOf[side.to]}, facet, number, hasCurve);
            }
            edge += count;
        }
        result.endStore.resize(tables.size);
        result.pairs.resize(tables.size);
        std::fill_n(kinds.begin() + tables.size, groupSize, std::uint8_t{0});
    }

    /// What the edges are for any view.
    void classify()
    {
        const std::size_t count = (result.size() + std::size_t{groupSize - 1}) / groupSize;
        result.groups.reserve(count);
        for (std::size_t i = 0; i < count; ++i) result.groups.push_back(groupOf(i * groupSize));
        gatherUses();
    }

private:
    struct FurtherUse {
        std::uint32_t outline;
        Use use;
    };
    /// Lists do not grow beyond this: what does not fit is found by a map of both ends.
    static constexpr std::uint32_t longestList = 64;

    /// What is known of an edge while its facets are met: bits of a byte.
    static constexpr std::uint8_t isBorder = 1, isOpposite = 2, isExamined = 4, isSharp = 8, isCurved = 16,
                                  isFar = 32;   // looked at later, when its facets have come from memory
    /// Facets by number that are nearer to each other than this are still in the cache.
    static constexpr std::uint32_t nearby = 8192;

    /// Where everything stands while edges are met; a copy on the stack stays in registers.
    struct Tables {
        const std::uint32_t* firstOf;
        Edge* ends;
        Pair* pairs;
        std::uint32_t *before, *newest;
        std::uint8_t* kinds;
        std::uint32_t size = 0;
    };

    Group& groupWith(std::uint32_t index) const noexcept { return result.groups[index / groupSize]; }
    static std::uint64_t bitOf(std::uint32_t index) noexcept { return std::uint64_t{1} << index % groupSize; }

    /// A side of a facet is a new edge, or one more use of an edge met before.
    void meet(Tables& tables, const Edge& ends, const Facet& facet, std::uint32_t number, bool hasCurve)
    {
        if (ends.from == ends.to || ends.from == none || ends.to == none) return;
        const bool forward = ends.from < ends.to;
        const std::uint32_t lower = forward ? ends.from : ends.to, both = ends.from ^ ends.to;
        const Use use{number << 1 | std::uint32_t{forward}};
        const std::uint32_t head = tables.newest[lower];
        std::uint32_t length = 0;
        for (std::uint32_t i = head; i != none; i = tables.before[i], ++length)
            if ((tables.ends[i].from ^ tables.ends[i].to) == both) return addUse(tables, i, use, facet);
        if (length == longestList) {
            const auto [at, isNew] =
                crowded.try_emplace(std::uint64_t{lower} << 32 | (lower ^ both), tables.size);
            if (!isNew) return addUse(tables, at->second, use, facet);
        } else {
            tables.before[tables.size] = head;
            tables.newest[lower] = tables.size;
        }
        tables.ends[tables.size] = ends;
        tables.pairs[tables.size] = {use, use};
        tables.kinds[tables.size] = hasCurve ? isBorder | isCurved : isBorder;
        ++tables.size;
    }

    /// A facet that has the edge several times comes several times, one after another.
    void addUse(const Tables& tables, std::uint32_t index, Use use, const Facet& facet)
    {
        Pair& pair = tables.pairs[index];
        if (!isSingle(pair)) {
            if (use.facet() != pair[1].facet()) further.push_back({index, use});
        } else if (use.facet() == pair[0].facet()) {
            tables.kinds[index] = 0;
        } else {
            pair[1] = use;
            if (use.facet() - pair[0].facet() >= nearby) {
                tables.kinds[index] = isFar;
                return;
            }
            const bool same = pair[0].forward() == use.forward();
            const bool sharp = differ(model.facet(pair[0].facet()), facet, same);
            tables.kinds[index] =
                static_cast<std::uint8_t>((same ? isExamined : isOpposite) | (sharp ? isSharp : 0));
        }
    }

    /// Of edges from `first` on, as if none had more than two facets.
    Group groupOf(std::size_t first)
    {
        Group group;
        std::uint64_t far = 0;
        for (unsigned i = 0; i < groupSize; i += 8) {
            std::uint64_t bytes = 0;
            for (unsigned k = 0; k < 8; ++k) bytes |= std::uint64_t{kinds[first + i + k]} << 8 * k;
            const auto bitsOf = [bytes, i](std::uint8_t kind) {
                const std::uint64_t ones = bytes >> std::countr_zero(kind) & 0x0101010101010101u;
                return (ones * 0x0102040810204080u >> 56) << i;   // byte k gives bit 56 + k of the product
            };
            group.borders |= bitsOf(isBorder);
            group.sharp |= bitsOf(isSharp);
            group.opposite |= bitsOf(isOpposite);
            group.examined |= bitsOf(isExamined);
            group.curved |= bitsOf(isCurved);
            far |= bitsOf(isFar);
        }
        pauses.step(8 + 2 * static_cast<std::size_t>(std::popcount(far)));
        if (far != 0) addFar(group, &result.pairs[first], far);
        return group;
    }

    /// Looks at the facets of the `far` edges of a group, which are anywhere in memory.
    void addFar(Group& group, const Pair* uses, std::uint64_t far) const noexcept
    {
        for (std::uint64_t left = far; left != 0; left &= left - 1)
            prefetch(&model.facet(uses[std::countr_zero(left)][1].facet()));
        for (std::uint64_t left = far; left != 0; left &= left - 1) {
            const auto [one, other] = uses[std::countr_zero(left)];
            const std::uint64_t bit = left & -left;
            const bool same = one.forward() == other.forward();
            (same ? group.examined : group.opposite) |= bit;
            if (differ(model.facet(one.facet()), model.facet(other.facet()), same)) group.sharp |= bit;
        }
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
    UnsetVector<std::uint32_t> before;   // by outline: the one before it with the same lower end
    UnsetVector<std::uint8_t> kinds;     // by outline
    std::unordered_map<std::uint64_t, std::uint32_t> crowded;
    std::vector<FurtherUse> further;   // than the second of an edge
};

Outlines::Outlines(const Model& model, const std::function<void()>& pause)
{
    if (model.facetCount() > none >> 1) throw std::bad_alloc();   // what a Use can name
    Matcher matcher(*this, model, pause);
    matcher.match();
    matcher.classify();
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
