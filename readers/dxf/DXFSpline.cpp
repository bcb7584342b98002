#include "readers/dxf/DXFSpline.h"

#include "calcore/Angle.h"
#include "calcore/Trigonometry.h"
#include "readers/dxf/DXFBSpline.h"

#include <algorithm>
#include <cmath>

namespace belvor {
namespace {

constexpr int maxChords = 36;

/// How far the control points of a span turn in all, in degrees.
double turnOf(const DXFHatchEdge& spline, std::size_t k) noexcept
{
    const auto degree = static_cast<std::size_t>(spline.degree);
    double turn = 0.0;
    Vector<2> before;
    for (std::size_t control = k - degree; control < k; ++control) {
        const Vector<2> side = spline.controls[control + 1] - spline.controls[control];
        if (side == Vector<2>()) continue;
        if (before != Vector<2>())
            turn += std::fabs(arctangent(before[0] * side[1] - before[1] * side[0], dot(before, side)));
        before = side;
    }
    return toDegrees(turn);
}

}   // namespace

DXFLoop2 splineChords(const DXFHatchEdge& spline)
{
    const DXFBSpline<2> curve{spline.degree, spline.knots, spline.controls, spline.weights};
    if (!curve.isUsable()) return spline.fitPoints.size() > 1 ? spline.fitPoints : spline.controls;
    const auto degree = static_cast<std::size_t>(spline.degree);
    DXFLoop2 chain{curve.at(degree, spline.knots[degree])};
    for (std::size_t k = degree; k < spline.controls.size(); ++k) {
        const double low = spline.knots[k], high = spline.knots[k + 1];
        if (!(high > low)) continue;
        const double tens = degree == 1 ? 1.0 : turnOf(spline, k) / 10.0 + 0.5;
        const int chords = static_cast<int>(std::clamp(tens, 1.0, static_cast<double>(maxChords)));
        for (int i = 1; i <= chords; ++i)
            chain.push_back(curve.at(k, i == chords ? high : low + (high - low) * i / chords));
    }
    return chain;
}

}   // namespace belvor
