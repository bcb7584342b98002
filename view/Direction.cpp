#include "view/Direction.h"

#include "calcore/Angle.h"

#include <algorithm>
#include <cmath>

namespace belvor {

double bearing(const Vector<3>& d) noexcept
{
    // −0.0 must not turn a vertical view round.
    return toDegrees(arctangent(d[0], -(d[1] + 0.0)));
}

double elevation(const Vector<3>& d) noexcept
{
    return toDegrees(arctangent(d[2], std::sqrt(d[0] * d[0] + d[1] * d[1])));
}

Vector<3> direction(double bearing, double elevation) noexcept
{
    const Angle b = Angle::degrees(bearing), e = Angle::degrees(elevation);
    return {b.sin() * e.cos(), -b.cos() * e.cos(), e.sin()};
}

double squash(double distance) noexcept { return std::atan(distance / 2.0) * 2.0 / std::numbers::pi; }

double unsquash(double position) noexcept { return 2.0 * std::tan(position * std::numbers::pi / 2.0); }

double slideDistance(double position) noexcept
{
    constexpr double end = 1.0 - 1.0 / 1024.0;
    return unsquash(std::clamp(position, -end, end));
}

}   // namespace belvor
