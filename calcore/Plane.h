#pragma once

#include "calcore/Point.h"

namespace belvor {

/// The set of points p with normal·p = offset.
class Plane {
public:
    constexpr Plane() noexcept : perpendicular(0, 0, 1) {}   // z = 0

    /// Both stored unchanged: a screen-space plane has no unit normal.
    constexpr Plane(const Vector<3>& normal, double offset) noexcept : perpendicular(normal), distance(offset)
    {}

    /// Through `point`, perpendicular to `normal`, which is made a unit vector.
    Plane(const Vector<3>& normal, const Point<3>& point) noexcept
        : perpendicular(normal.unit()),
          distance(dot(perpendicular, point.vector()))
    {}

    /// Through three points, counter-clockwise seen from the normal's side.
    Plane(const Point<3>& a, const Point<3>& b, const Point<3>& c) noexcept : Plane((b - a).cross(c - a), a)
    {}

    constexpr const Vector<3>& normal() const noexcept { return perpendicular; }
    constexpr double offset() const noexcept { return distance; }

    /// Signed distance, positive on the normal's side (for a unit normal).
    constexpr double distanceTo(const Point<3>& p) const noexcept
    {
        return dot(perpendicular, p.vector()) - distance;
    }

    /// The point of the plane nearest to `p` (for a unit normal).
    constexpr Point<3> project(const Point<3>& p) const noexcept { return p - perpendicular * distanceTo(p); }

    /// The same set of points, seen from the other side.
    constexpr Plane operator-() const noexcept { return {-perpendicular, -distance}; }

private:
    Vector<3> perpendicular;
    double distance = 0.0;
};

}   // namespace belvor
