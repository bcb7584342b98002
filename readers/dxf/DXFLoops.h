#pragma once

#include "calcore/Plane.h"
#include "calcore/Transform.h"
#include "readers/dxf/DXFAxes.h"

#include <span>
#include <vector>

namespace belvor {

using DXFLoop = std::vector<Point<3>>;

/// Removes corners that equal the one before them, the first being after the last.
void dropRepeats(DXFLoop& loop);

/// Whether the edge from a to b, moved along `thickness`, covers any area.
bool makesWall(const Point<3>& a, const Point<3>& b, const Vector<3>& thickness) noexcept;

/// The plane of a facet with these corners: through their mean, perpendicular to their
/// vector area. Where that vanishes the normal is `flatNormal`, or +z when that is zero too.
Plane planeOf(std::span<const Point<3>> corners, const Vector<3>& flatNormal) noexcept;

/// The plane of a facet with these corners, given its own axes (null: the world's) and the
/// transform that took the corners where they are. False when a corner is beyond what a
/// number can hold, so that there is no facet. `radiusSquare`: that of the
/// sphere around the first corner that holds all.
bool facetPlane(std::span<const Point<3>> corners, const DXFAxes* flat, const AffineTransform<3>& transform,
                Plane& plane, double& radiusSquare) noexcept;

}   // namespace belvor
