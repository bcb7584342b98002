#include "readers/dxf/DXFOutliers.h"

#include "calcore/Extent.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <numeric>

namespace belvor {
namespace {

constexpr std::size_t firstEntities = 64;   // that the reference is chosen from
constexpr double farFactor = 16.0;   // of their distances: what is nearer makes no extent 100 times larger
constexpr double factor = 100.0;
constexpr std::uint64_t share = 100;   // one of so many entities

void add(Extent<3>& to, const Extent<3>& box) noexcept
{
    if (box.degenerate()) return;
    to += box.lo();
    to += box.hi();
}

double sizeOf(const Extent<3>& box) noexcept
{
    return box.degenerate() ? 0.0 : (box.hi() - box.lo()).length();
}

/// The median of each coordinate, so that a few that are far away do not matter.
template <class Items>
Point<3> middleOf(const Items& items)
{
    Point<3> middle;
    std::vector<double> values(items.size());
    for (int axis = 0; axis < 3; ++axis) {
        std::transform(items.begin(), items.end(), values.begin(),
                       [axis](const auto& item) { return item.at[axis]; });
        const auto median = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
        std::nth_element(values.begin(), median, values.end());
        middle[axis] = *median;
    }
    return middle;
}

/// Takes boxes to `others` in the given order: how many until the next one makes their extent large, while
/// without it that of all is `factor` times larger. All when there is no such one.
std::size_t countNear(const Extent<3>& others, const std::vector<Extent<3>>& boxes,
                      const std::vector<std::size_t>& order)
{
    Extent<3> all = others, rest = others;
    for (const Extent<3>& box : boxes) add(all, box);
    const auto isSmall = [&all](const Extent<3>& box) {
        return sizeOf(box) > 0.0 && sizeOf(all) > factor * sizeOf(box);
    };
    std::size_t near = 0;
    for (; near < order.size(); ++near) {
        Extent<3> more = rest;
        add(more, boxes[order[near]]);
        if (isSmall(rest) && !isSmall(more)) break;
        rest = more;
    }
    return near;
}

}   // namespace

inline void DXFOutliers::keep(const Entity& entity)
{
    constexpr std::size_t fewest = 256;
    kept.push_back(entity);
    if (kept.size() > fewest + entities / (share / 2)) dropNearerHalf();
}

/// Of an entity that is far from the reference, or of any until there is one.
void DXFOutliers::endFar(std::uint32_t vertices, std::uint32_t curvePoints)
{
    if (limitSquare >= 0.0) {
        keep({reach, position, firstVertex, vertices, firstPoint, curvePoints});
    } else {
        first.push_back({{reach, position, firstVertex, vertices, firstPoint, curvePoints}, at});
        if (first.size() == firstEntities) chooseReference();
    }
    reach = 0.0;
    isFar = false;
}

void DXFOutliers::addFar(const Point<3>& point, double distanceSquare, double radiusSquare)
{
    if (!isFar) at = point;
    isFar = true;
    const double distance = limitSquare < 0.0 ? (point - at).length() : std::sqrt(distanceSquare);
    reach = std::max(reach, distance + std::sqrt(radiusSquare));
}

/// Among the first entities; those far from it are kept from now on.
void DXFOutliers::chooseReference()
{
    reference = middleOf(first);
    std::vector<double> distances;
    for (FirstEntity& each : first) {
        distances.push_back((each.at - reference).length());
        each.entity.reach += distances.back();
    }
    std::sort(distances.begin(), distances.end());
    const double limit = farFactor * distances[distances.size() * 9 / 10];
    limitSquare = limit * limit;
    for (const FirstEntity& each : first)
        if (each.entity.reach > limit) keep(each.entity);
    first.clear();
}

/// Of too many the nearer half is nothing unusual; nor is what comes later and is not several times as far.
void DXFOutliers::dropNearerHalf()
{
    const double limit = farFactor / 2 * dropNearest(kept.size() / 2);
    const double nearest = std::min_element(kept.begin(), kept.end(), nearer)->reach;
    limitSquare = std::max({limitSquare, limit * limit, nearest * nearest});
}

/// The `count` nearest; of equally far ones the first. The others stay in order. Returns how far the farthest
/// of those that go is. Counting by rough distance is several times quicker here than a partial sort, whose
/// comparisons no processor foresees: a drawing that grows away from its beginning has many that are kept for
/// a while.
double DXFOutliers::dropNearest(std::size_t count)
{
    if (count == 0) return 0.0;
    // 1. Reaches are not negative: their bits have the same order.
    const auto bitsOf = [](const Entity& entity) { return std::bit_cast<std::uint64_t>(entity.reach); };
    std::uint64_t lowest = bitsOf(kept.front()), highest = lowest;
    for (const Entity& entity : kept) {
        lowest = std::min(lowest, bitsOf(entity));
        highest = std::max(highest, bitsOf(entity));
    }

    // 2. The bucket in which the last of them is, and its place there.
    constexpr int bucketBits = 10;
    const int shift = std::max(0, static_cast<int>(std::bit_width(highest - lowest)) - bucketBits);
    const auto bucketOf = [&](const Entity& entity) {
        return static_cast<std::size_t>((bitsOf(entity) - lowest) >> shift);
    };
    std::array<std::size_t, std::size_t{1} << bucketBits> sizes{};
    for (const Entity& entity : kept) ++sizes[bucketOf(entity)];
    std::size_t bucket = 0, place = count - 1;
    for (; place >= sizes[bucket]; ++bucket) place -= sizes[bucket];

    // 3. Its reach, and how many of just that go.
    std::vector<std::uint64_t> inBucket;
    for (const Entity& entity : kept)
        if (bucketOf(entity) == bucket) inBucket.push_back(bitsOf(entity));
    std::sort(inBucket.begin(), inBucket.end());
    const std::uint64_t last = inBucket[place];
    auto equal = place + 1
                 - static_cast<std::size_t>(std::lower_bound(inBucket.begin(), inBucket.end(), last)
                                            - inBucket.begin());

    // 4. All that is farther.
    std::size_t left = 0;
    for (const Entity& entity : kept) {
        const std::uint64_t bits = bitsOf(entity);
        const bool goes = bits < last || (bits == last && equal > 0);
        equal -= bits == last && goes;
        kept[left] = entity;
        left += !goes;
    }
    kept.resize(left);
    return std::bit_cast<double>(last);
}

/// The boxes of the entities in `far`, which are in the order of the file, and of all else, of which only
/// every `step`-th vertex is looked at.
DXFOutliers::Boxes DXFOutliers::boxesOf(const Model& model, const std::vector<Entity>& far,
                                        std::uint32_t step, const std::function<void()>& pause)
{
    constexpr std::uint32_t pointsBetweenPauses = 1 << 20;
    Boxes boxes{Extent<3>::nothing(), std::vector<Extent<3>>(far.size(), Extent<3>::nothing())};
    std::size_t next = 0;
    for (std::uint32_t i = 0; i < model.vertexCount(); i += step) {
        while (next < far.size() && far[next].endVertex <= i) ++next;
        const bool isFar = next < far.size() && far[next].firstVertex <= i;
        (isFar ? boxes.far[next] : boxes.others) += model.vertex(i).position;
        if (i % pointsBetweenPauses == 0) pause();
    }
    next = 0;
    std::uint64_t looked = 0;   // at curves and points
    for (std::uint32_t c = 0; c < model.curveCount(); ++c) {
        const Curve& curve = model.curve(c);
        const std::uint32_t end = curve.firstPoint + curve.pointCount;
        while (next < far.size() && far[next].endPoint <= curve.firstPoint) ++next;
        const bool isFar = next < far.size() && far[next].firstPoint <= curve.firstPoint;
        Extent<3>& box = isFar ? boxes.far[next] : boxes.others;
        const std::uint64_t before = looked;
        if (++looked; curve.bounded)
            for (std::uint64_t i = (curve.firstPoint + std::uint64_t{step} - 1) / step * step; i < end;
                 i += step, ++looked)
                box += model.curvePoint(static_cast<std::uint32_t>(i));
        if (before / pointsBetweenPauses != looked / pointsBetweenPauses) pause();
    }
    return boxes;
}

DXFOutliers::Result DXFOutliers::find(const Model& model, const std::function<void()>& pause)
{
    // 1. The farthest hundredth.
    Result result{entities, {}};
    const auto most = static_cast<std::size_t>(std::min<std::uint64_t>(entities / share, kept.size()));
    dropNearest(kept.size() - most);
    if (most == 0) return result;
    const double farthest = std::max_element(kept.begin(), kept.end(), nearer)->reach;

    // 2. A few vertices of the others often show that their box is large enough.
    const std::uint32_t samples = 1000, step = 1 + model.vertexCount() / samples;
    const double diagonal = 2.0 * std::sqrt(3.0) * farthest;   // of everything, at most
    if (step > 1 && diagonal <= factor * sizeOf(boxesOf(model, kept, step, pause).others)) return result;

    // 3. Else all of them; those that the extent is not large without are no outliers.
    const Boxes boxes = boxesOf(model, kept, 1, pause);
    std::vector<std::size_t> byReach(kept.size());
    std::iota(byReach.begin(), byReach.end(), std::size_t{0});
    std::sort(byReach.begin(), byReach.end(),
              [this](std::size_t a, std::size_t b) { return kept[a].reach < kept[b].reach; });
    const std::size_t near = countNear(boxes.others, boxes.far, byReach);
    if (near == byReach.size()) return result;
    byReach.erase(byReach.begin(), byReach.begin() + static_cast<std::ptrdiff_t>(near));
    std::sort(byReach.begin(), byReach.end());
    for (const std::size_t index : byReach) result.positions.push_back(kept[index].position);
    return result;
}

}   // namespace belvor
