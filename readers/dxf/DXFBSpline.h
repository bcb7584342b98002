#pragma once

#include "calcore/Point.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>

namespace belvor {

/// A spline in N dimensions by its knots and control points, which it does not own.
template <int N>
struct DXFBSpline {
    static constexpr int maxDegree = 15;

    int degree;
    std::span<const double> knots;
    std::span<const Point<N>> controls;
    std::span<const double> weights;   ///< As many as controls, or none.

    /// Whether its knots fit: their count is that of the control points + degree + 1, they never fall and
    /// are not all one where the spline runs.
    bool isUsable() const noexcept
    {
        return degree >= 1 && degree <= maxDegree && controls.size() > static_cast<std::size_t>(degree)
               && knots.size() == controls.size() + static_cast<std::size_t>(degree) + 1
               && std::is_sorted(knots.begin(), knots.end())
               && knots[static_cast<std::size_t>(degree)] < knots[controls.size()]
               && std::all_of(weights.begin(), weights.end(), [](double w) { return w > 0.0; });
    }

    /// The point at parameter u of the span from knot k to knot k + 1, by de Boor's scheme in homogeneous
    /// coordinates. Of a usable one.
    Point<N> at(std::size_t k, double u) const noexcept
    {
        const auto last = static_cast<std::size_t>(degree);
        std::array<std::array<double, maxDegree + 1>, N> p{};
        std::array<double, maxDegree + 1> w{};
        for (std::size_t j = 0; j <= last; ++j) {
            const std::size_t control = k - last + j;
            w[j] = weights.empty() ? 1.0 : weights[control];
            for (int axis = 0; axis < N; ++axis)
                p[static_cast<std::size_t>(axis)][j] = controls[control][axis] * w[j];
        }
        for (std::size_t level = 1; level <= last; ++level)
            for (std::size_t j = last; j >= level; --j) {
                const double low = knots[k - last + j], high = knots[k + 1 + j - level];
                const double part = high > low ? (u - low) / (high - low) : 0.0;
                for (auto& axis : p) axis[j] = axis[j - 1] + (axis[j] - axis[j - 1]) * part;
                w[j] = w[j - 1] + (w[j] - w[j - 1]) * part;
            }
        Point<N> result;
        for (int axis = 0; axis < N; ++axis) result[axis] = p[static_cast<std::size_t>(axis)][last] / w[last];
        return result;
    }
};

}   // namespace belvor
