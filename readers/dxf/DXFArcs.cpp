#include "readers/dxf/DXFArcs.h"

#include "calcore/Angle.h"
#include "calcore/Trigonometry.h"

#include <algorithm>
#include <cmath>

namespace belvor {

int arcSegments(double sweep, double radius) noexcept
{
    const double turn = sweep >= 0.001 ? sweep : sweep + 360.0;
    const double tens = std::clamp(turn * 0.1 + 0.5, 0.0, 36.0);
    if (tens >= 3.0) return static_cast<int>(tens);
    const double byLength = toRadians(sweep) * radius / 10.0 + 0.5;
    return static_cast<int>(byLength >= 1.0 ? std::min(byLength, 3.0) : 1.0);
}

int curveChords(double sweep) noexcept
{
    constexpr double degreesPerChord = 2.0 * (1.0 + 1e-12);   // a rounded sweep makes no further chord
    const double chords = std::ceil(std::fabs(sweep) / degreesPerChord);
    return static_cast<int>(std::clamp(chords, 1.0, 360.0));
}

double sweepBetween(double start, double end) noexcept
{
    const double sweep = std::fmod(end - start, 360.0);
    return sweep > 0.0 ? sweep : sweep + 360.0;
}

bool isBent(double bulge) noexcept { return std::fabs(bulge) >= 1e-9; }

BulgeArc bulgeArc(const Point<2>& p, const Point<2>& q, double bulge) noexcept
{
    const Vector<2> along = q - p;
    const double chord = along.length();
    const Vector<2> left(-along[1] / chord, along[0] / chord);
    const double height = chord * (1.0 - bulge * bulge) / (4.0 * bulge);
    const double radius = chord * (1.0 + bulge * bulge) / (4.0 * std::fabs(bulge));
    const Point<2> centre = p + along * 0.5 + left * height;
    const double sweep = 4.0 * arctangent(bulge);
    return {centre, radius, (p - centre).theta(), sweep, arcSegments(toDegrees(std::fabs(sweep)), radius)};
}

Vector<2> BulgeArc::spoke(int k) const noexcept
{
    const double angle = startAngle + sweep * k / chords;
    return {cosine(angle), sine(angle)};
}

}   // namespace belvor
