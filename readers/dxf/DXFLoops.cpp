#include "readers/dxf/DXFLoops.h"

#include <algorithm>
#include <cmath>

namespace belvor {
namespace {

/// What a loop's plane is made from, of the spokes from its first corner to the others, each
/// multiplied by a scale. About the origin, map coordinates in the millions would drown the
/// digits that matter.
struct SpokeSums {
    Vector<3> area;   // of the cross products of neighbours
    Vector<3> spokes;
    double longestSquare = 0.0;

    template <std::size_t size>
    SpokeSums(std::span<const Point<3>, size> corners, double scale) noexcept
    {
        Vector<3> previous;
        for (std::size_t i = 1; i < corners.size(); ++i) {
            const Vector<3> spoke = (corners[i] - corners[0]) * scale;
            if (i > 1) area += previous.cross(spoke);
            spokes += spoke;
            longestSquare = std::max(longestSquare, dot(spoke, spoke));
            previous = spoke;
        }
    }
};

double largestCoordinate(std::span<const Point<3>> corners) noexcept
{
    double largest = 0.0;
    for (const Point<3>& corner : corners)
        for (int axis = 0; axis < 3; ++axis)
            largest = std::max(largest, std::fabs(corner[axis] - corners[0][axis]));
    return largest;
}

/// planeOf() with a normal that is asked for only where it is needed.
template <class FlatNormal>
[[gnu::always_inline]] inline Plane planeWith(std::span<const Point<3>> corners, double& longestSquare,
                                              FlatNormal flatNormalOf) noexcept
{
    constexpr double flat = 1e-12;   // of the square of the loop's size
    // Nearly all loops have four corners: told so, the compiler writes the sums out.
    const SpokeSums sums = corners.size() == 4 ? SpokeSums(corners.first<4>(), 1.0) : SpokeSums(corners, 1.0);
    Vector<3> normal = sums.area;
    double square = longestSquare = sums.longestSquare;
    if (!(square > 1e-100 && square < 1e100)) {   // fourth powers would leave the range of a double
        const double largest = largestCoordinate(corners);
        if (largest > 0.0 && std::isfinite(1.0 / largest)) {
            const SpokeSums scaled(corners, 1.0 / largest);
            normal = scaled.area;
            square = scaled.longestSquare;
        }
    }
    const Point<3> mean = corners[0] + sums.spokes * (1.0 / static_cast<double>(corners.size()));
    const double length = normal.length();
    if (length > flat * square && std::isfinite(length)) {
        const Vector<3> unit(normal[0] / length, normal[1] / length, normal[2] / length);
        return {unit, dot(unit, mean.vector())};
    }
    const Vector<3> flatNormal = flatNormalOf();
    if (flatNormal.unit() == Vector<3>() || !std::isfinite(flatNormal.length()))
        return {Vector<3>(0, 0, 1), mean};
    return {flatNormal, mean};
}

/// And small enough to be added up.
bool isFinite(std::span<const Point<3>> corners) noexcept
{
    double sum = 0.0;   // a term that is infinite or no number leaves no number behind
    for (const Point<3>& corner : corners) sum += (corner[0] + corner[1] + corner[2]) * 0.0;
    return sum == 0.0;
}

}   // namespace

void dropRepeats(DXFLoop& loop)
{
    loop.erase(std::unique(loop.begin(), loop.end()), loop.end());
    while (loop.size() > 1 && loop.front() == loop.back()) loop.pop_back();
}

bool makesWall(const Point<3>& a, const Point<3>& b, const Vector<3>& thickness) noexcept
{
    return (b - a).cross(thickness) != Vector<3>();
}

Plane planeOf(std::span<const Point<3>> corners, const Vector<3>& flatNormal) noexcept
{
    double longestSquare;
    return planeWith(corners, longestSquare, [&flatNormal] { return flatNormal; });
}

bool facetPlane(std::span<const Point<3>> corners, const DXFAxes* flat, const AffineTransform<3>& transform,
                Plane& plane, double& radiusSquare) noexcept
{
    plane = planeWith(corners, radiusSquare, [flat, &transform] {
        return flat ? transform(flat->x()).cross(transform(flat->y())) : Vector<3>(0, 0, 1);
    });
    return std::isfinite(plane.offset())
           || isFinite(corners);   // a corner that is not leaves no finite offset
}

}   // namespace belvor
