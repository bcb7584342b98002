#include "readers/dxf/DXFLoops.h"

#include <algorithm>
#include <cmath>

namespace belvor {
namespace {

/// The sum over the loop of the cross products about its first corner, and the square of the
/// largest distance from there. About the origin, map coordinates in the millions would
/// drown the digits that matter.
Vector<3> vectorArea(std::span<const Point<3>> corners, double scale, double& largestSquare) noexcept
{
    Vector<3> sum;
    largestSquare = 0.0;
    Vector<3> previous = (corners.size() > 1 ? corners[1] - corners[0] : Vector<3>()) * scale;
    largestSquare = dot(previous, previous);
    for (std::size_t i = 2; i < corners.size(); ++i) {
        const Vector<3> spoke = (corners[i] - corners[0]) * scale;
        sum += previous.cross(spoke);
        largestSquare = std::max(largestSquare, dot(spoke, spoke));
        previous = spoke;
    }
    return sum;
}

double largestCoordinate(std::span<const Point<3>> corners) noexcept
{
    double largest = 0.0;
    for (const Point<3>& corner : corners)
        for (int axis = 0; axis < 3; ++axis) largest = std::max(largest, std::fabs(corner[axis] - corners[0][axis]));
    return largest;
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
    constexpr double flat = 1e-12;   // of the square of the loop's size
    double square = 0.0;
    Vector<3> normal = vectorArea(corners, 1.0, square);
    if (!(square > 1e-100 && square < 1e100)) {   // fourth powers would leave the range of a double
        const double largest = largestCoordinate(corners);
        if (largest > 0.0 && std::isfinite(1.0 / largest)) normal = vectorArea(corners, 1.0 / largest, square);
    }
    const double length = normal.length();
    if (!(length > flat * square && std::isfinite(length))) {
        normal = flatNormal;
        if (normal.unit() == Vector<3>() || !std::isfinite(normal.length())) normal = {0, 0, 1};
    }

    Vector<3> mean;
    for (const Point<3>& corner : corners) mean += corner - corners[0];
    return {normal, corners[0] + mean * (1.0 / static_cast<double>(corners.size()))};
}

}   // namespace belvor
