#include "readers/dxf/DXFSpline.h"

#include "calcore/Angle.h"
#include "calcore/Trigonometry.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace belvor {
namespace {

constexpr int maxDegree = 15, maxChords = 36;

bool isUsable(const DXFHatchEdge& spline) noexcept
{
    const int degree = spline.degree;
    return degree >= 1 && degree <= maxDegree && spline.controls.size() > static_cast<std::size_t>(degree)
           && spline.knots.size() == spline.controls.size() + static_cast<std::size_t>(degree) + 1
           && std::is_sorted(spline.knots.begin(), spline.knots.end())
           && std::all_of(spline.weights.begin(), spline.weights.end(), [](double w) { return w > 0.0; });
}

/// The point at parameter u of the span from knot k to knot k + 1, by de Boor's scheme in homogeneous
/// coordinates.
Point<2> pointAt(const DXFHatchEdge& spline, std::size_t k, double u) noexcept
{
    const auto degree = static_cast<std::size_t>(spline.degree);
    std::array<double, maxDegree + 1> x{}, y{}, w{};
    for (std::size_t j = 0; j <= degree; ++j) {
        const std::size_t control = k - degree + j;
        w[j] = spline.weights.empty() ? 1.0 : spline.weights[control];
        x[j] = spline.controls[control][0] * w[j];
        y[j] = spline.controls[control][1] * w[j];
    }
    for (std::size_t level = 1; level <= degree; ++level)
        for (std::size_t j = degree; j >= level; --j) {
            const double low = spline.knots[k - degree + j], high = spline.knots[k + 1 + j - level];
            const double part = high > low ? (u - low) / (high - low) : 0.0;
            x[j] = x[j - 1] + (x[j] - x[j - 1]) * part;
            y[j] = y[j - 1] + (y[j] - y[j - 1]) * part;
            w[j] = w[j - 1] + (w[j] - w[j - 1]) * part;
        }
    return {x[degree] / w[degree], y[degree] / w[degree]};
}

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
    if (!isUsable(spline)) return spline.fitPoints.size() > 1 ? spline.fitPoints : spline.controls;
    const auto degree = static_cast<std::size_t>(spline.degree);
    DXFLoop2 chain{pointAt(spline, degree, spline.knots[degree])};
    for (std::size_t k = degree; k < spline.controls.size(); ++k) {
        const double low = spline.knots[k], high = spline.knots[k + 1];
        if (!(high > low)) continue;
        const double tens = degree == 1 ? 1.0 : turnOf(spline, k) / 10.0 + 0.5;
        const int chords = static_cast<int>(std::clamp(tens, 1.0, static_cast<double>(maxChords)));
        for (int i = 1; i <= chords; ++i)
            chain.push_back(pointAt(spline, k, i == chords ? high : low + (high - low) * i / chords));
    }
    return chain;
}

}   // namespace belvor
