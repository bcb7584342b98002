#include "readers/dxf/DXFAreas.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numeric>
#include <optional>

namespace belvor {
namespace {

constexpr std::uint64_t maxLooks = 50'000'000;   // at a side or a box; more would take seconds
constexpr double closeToSide = 1e-9;             // of the outline's size: the point lies on its side

struct Box {
    Point<2> low, high;

    bool contains(const Box& other) const noexcept
    {
        return other.low[0] >= low[0] && other.low[1] >= low[1] && other.high[0] <= high[0]
               && other.high[1] <= high[1];
    }
};

Box boxOf(const DXFLoop2& loop) noexcept
{
    Box box{loop.front(), loop.front()};
    for (const Point<2>& corner : loop)
        for (int axis = 0; axis < 2; ++axis) {
            box.low[axis] = std::min(box.low[axis], corner[axis]);
            box.high[axis] = std::max(box.high[axis], corner[axis]);
        }
    return box;
}

double cross(const Vector<2>& a, const Vector<2>& b) noexcept { return a[0] * b[1] - a[1] * b[0]; }

double areaOf(const DXFLoop2& loop) noexcept
{
    double twice = 0.0;
    for (std::size_t i = 2; i < loop.size(); ++i) twice += cross(loop[i - 1] - loop[0], loop[i] - loop[0]);
    return std::fabs(twice) / 2.0;
}

enum class Side { inside, outside, on };

/// Where a point lies, by the sides that a ray from it to the right crosses.
Side sideOf(const Point<2>& p, const DXFLoop2& loop, double tolerance) noexcept
{
    bool inside = false;
    Point<2> a = loop.back();
    for (const Point<2>& b : loop) {
        const Vector<2> side = b - a, spoke = p - a;
        const double length = side.length(), along = dot(side, spoke);
        if (std::fabs(cross(side, spoke)) <= tolerance * length && along >= -tolerance * length
            && along <= (length + tolerance) * length)
            return Side::on;
        if ((a[1] > p[1]) != (b[1] > p[1])) {
            const double turn = cross(side, spoke);
            if ((turn > 0.0) == (b[1] > a[1])) inside = !inside;
        }
        a = b;
    }
    return inside ? Side::inside : Side::outside;
}

/// The outlines as a forest: which is the smallest around each.
class Nesting {
public:
    explicit Nesting(const std::vector<DXFLoop2>& outlines) : loops(outlines) {}

    static constexpr std::size_t none = static_cast<std::size_t>(-1);

    /// For each outline the index of the one around it, or none; nothing when that takes too much work.
    std::optional<std::vector<std::size_t>> parents()
    {
        measure();
        std::vector<std::size_t> result(loops.size(), none);
        for (std::size_t i = 1; i < order.size(); ++i)
            for (std::size_t j = i; j-- > 0;) {
                if (++looks > maxLooks) return {};
                if (!boxes[order[j]].contains(boxes[order[i]]) || !lieIn(order[i], order[j])) continue;
                result[order[i]] = order[j];
                break;
            }
        return looks > maxLooks ? std::nullopt : std::optional(std::move(result));
    }

private:
    void measure()
    {
        order.resize(loops.size());
        std::iota(order.begin(), order.end(), std::size_t{0});
        for (const DXFLoop2& loop : loops) {
            boxes.push_back(boxOf(loop));
            areas.push_back(areaOf(loop));
        }
        std::stable_sort(order.begin(), order.end(),
                         [this](std::size_t a, std::size_t b) { return areas[a] > areas[b]; });
    }

    /// The first corner or middle of a side that is not on the outer outline decides; two equal outlines
    /// lie in each other.
    bool lieIn(std::size_t inner, std::size_t outer)
    {
        const DXFLoop2 &candidates = loops[inner], &around = loops[outer];
        const double tolerance = closeToSide * (boxes[outer].high - boxes[outer].low).length();
        for (std::size_t i = 0; i < candidates.size() && looks <= maxLooks; ++i) {
            const Point<2>& next = candidates[(i + 1) % candidates.size()];
            for (const Point<2>& p : {candidates[i], candidates[i] + (next - candidates[i]) * 0.5}) {
                looks += around.size();
                const Side side = sideOf(p, around, tolerance);
                if (side != Side::on) return side == Side::inside;
            }
        }
        return true;
    }

    const std::vector<DXFLoop2>& loops;
    std::vector<Box> boxes;
    std::vector<double> areas;
    std::vector<std::size_t> order;   // by area, the largest first
    std::uint64_t looks = 0;
};

std::vector<int> depthsOf(const std::vector<std::size_t>& parents)
{
    std::vector<int> depths(parents.size(), -1);
    for (std::size_t i = 0; i < parents.size(); ++i) {
        std::vector<std::size_t> chain;   // up to one whose depth is known
        for (std::size_t at = i; at != Nesting::none && depths[at] < 0; at = parents[at]) chain.push_back(at);
        for (; !chain.empty(); chain.pop_back()) {
            const std::size_t parent = parents[chain.back()];
            depths[chain.back()] = parent == Nesting::none ? 0 : depths[parent] + 1;
        }
    }
    return depths;
}

}   // namespace

std::vector<DXFArea> areasOf(std::vector<DXFLoop2> outlines, DXFHatchStyle style)
{
    if (outlines.empty()) return {};
    const auto parents = Nesting(outlines).parents();
    if (!parents) return {std::move(outlines)};
    const std::vector<int> depths = depthsOf(*parents);
    const auto isOuter = [&](std::size_t i) {
        return style == DXFHatchStyle::oddParity ? depths[i] % 2 == 0 : depths[i] == 0;
    };
    std::vector<DXFArea> areas;
    std::vector<std::size_t> areaOfOutline(outlines.size());
    for (std::size_t i = 0; i < outlines.size(); ++i) {
        if (!isOuter(i)) continue;
        areaOfOutline[i] = areas.size();
        areas.push_back({std::move(outlines[i])});
    }
    if (style == DXFHatchStyle::outerOnly) return areas;
    for (std::size_t i = 0; i < outlines.size(); ++i) {
        const std::size_t parent = (*parents)[i];
        if (!isOuter(i) && isOuter(parent)) areas[areaOfOutline[parent]].push_back(std::move(outlines[i]));
    }
    return areas;
}

}   // namespace belvor
