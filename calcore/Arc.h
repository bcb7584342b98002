#pragma once

#include "calcore/Angle.h"
#include "calcore/Plane.h"

namespace belvor {

/// A circular arc in space: it starts at a point and sweeps counter-clockwise about a unit
/// normal through the centre.
template <int N>
class Arc;

template <>
class Arc<3> {
public:
    /// `normal` is a unit vector perpendicular to start − centre; `sweep` is not negative.
    Arc(const Point<3>& centre, const Point<3>& start, const Vector<3>& normal, Angle sweep) noexcept
        : middle(centre),
          spoke(start - centre),
          side(normal.cross(spoke)),
          turn(sweep)
    {}

    const Point<3>& centre() const noexcept { return middle; }
    double radius() const noexcept { return spoke.length(); }
    double length() const noexcept { return radius() * turn.radians(); }

    /// The point at arc length `distance` from the start.
    Point<3> measureOff(double distance) const noexcept
    {
        const double size = radius();
        return atAngle(Angle::radians(size == 0.0 ? 0.0 : distance / size));
    }
    /// The point at `angle` from the start.
    Point<3> atAngle(Angle angle) const noexcept { return middle + spoke * angle.cos() + side * angle.sin(); }

    /// The largest distance between the arc and its `chords` equal chords.
    double deviation(int chords) const noexcept
    {
        return radius() * (1.0 - cosine(turn.radians() / (2.0 * chords)));
    }

private:
    Point<3> middle;
    Vector<3> spoke, side;
    Angle turn;
};

}   // namespace belvor
