#pragma once

#include "calcore/Point.h"

#include <cmath>
#include <optional>

namespace belvor {

/// An endless straight line.
template <int N>
struct Line {
    Point<N> point;
    Vector<N> direction;
};

/// Where two lines of the plane meet; nothing when they are parallel to within 1e-12 of
/// the product of their directions' lengths.
inline std::optional<Point<2>> intersect(const Line<2>& a, const Line<2>& b) noexcept
{
    const auto cross = [](const Vector<2>& u, const Vector<2>& v) { return u[0] * v[1] - u[1] * v[0]; };
    const double sine = cross(a.direction, b.direction);
    if (!(std::abs(sine) > 1e-12 * a.direction.length() * b.direction.length())) return std::nullopt;
    return a.point + a.direction * (cross(b.point - a.point, b.direction) / sine);
}

}   // namespace belvor
