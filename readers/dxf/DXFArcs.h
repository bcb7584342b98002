#pragma once

#include "calcore/Angle.h"
#include "calcore/Point.h"

namespace belvor {

/// How many chords stand for an arc of `sweep` degrees with `radius` in drawing units: one
/// for 10 degrees, and below 25 degrees one to three by its length. A sweep below 0.001
/// counts a full turn more.
int arcSegments(double sweep, double radius) noexcept;

/// How many chords of at most 2 degrees stand for an arc of `sweep` degrees, where it is drawn as a curve.
int curveChords(double sweep) noexcept;

/// Calls add(cosine, sine) for the ends of the chords of a curve over `sweep` degrees of a circle from
/// `start` on; after a full turn the first again.
template <class Add>
void forEachArcPoint(double start, double sweep, Add add)
{
    const int chords = curveChords(sweep);
    for (int k = 0; k <= chords; ++k) {
        const bool closing = k == chords && sweep == 360.0;
        const Angle at = Angle::degrees(closing ? start : start + sweep * k / chords);
        add(at.cos(), at.sin());
    }
}

/// The sweep from `start` to `end`, counter-clockwise, all in degrees; equal angles are a full turn.
double sweepBetween(double start, double end) noexcept;

/// The arc that a bulge puts on the chord from p to q.
struct BulgeArc {
    Point<2> centre;
    double radius;
    double startAngle;   ///< Radians, of p seen from the centre.
    double sweep;        ///< Radians, positive counter-clockwise.
    int chords;

    /// The unit vector from the centre to end `k` of a chord, 0 to `chords`.
    Vector<2> spoke(int k) const noexcept;
};

/// Whether a bulge bends its segment at all.
bool isBent(double bulge) noexcept;

/// For a bent segment of some length. The radius is not finite when it does not fit a double.
BulgeArc bulgeArc(const Point<2>& p, const Point<2>& q, double bulge) noexcept;

}   // namespace belvor
