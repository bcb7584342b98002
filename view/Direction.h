#pragma once

#include "calcore/Point.h"

namespace belvor {

/// The bearing of a direction in degrees: atan2(x, −y). A vertical direction has bearing
/// ±180, the way up of the plan view, whatever the sign of its zeros.
double bearing(const Vector<3>& direction) noexcept;

/// The elevation of a direction in degrees, −90 to 90.
double elevation(const Vector<3>& direction) noexcept;

/// The unit vector of a bearing and an elevation in degrees.
Vector<3> direction(double bearing, double elevation) noexcept;

/// Maps every distance into (−1, 1), as the eye slide shows it: atan(v / 2) · 2/π.
double squash(double distance) noexcept;

/// The distance that squash() maps to `position`: 2·tan(position·π/2).
double unsquash(double position) noexcept;

/// The same for a position that a user has chosen on the slide. Its ends stand for 1304 radii, not for
/// infinity: depth would lose all its digits there.
double slideDistance(double position) noexcept;

}   // namespace belvor
