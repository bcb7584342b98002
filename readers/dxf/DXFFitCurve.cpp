#include "readers/dxf/DXFFitCurve.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace belvor {
namespace {

/// The derivatives of the curve at its points: one linear equation for each, with the derivatives of the
/// point before and the one after.
class Derivatives {
public:
    Derivatives(const DXFLoop& through, const DXFCurveEnds& curveEnds)
        : points(through),
          ends(curveEnds),
          count(through.size())
    {
        for (std::size_t i = 0; i + 1 < count; ++i) lengths.push_back((points[i + 1] - points[i]).length());
    }

    std::vector<Vector<3>> solve()
    {
        if (ends.closed) return solveClosed();
        addEnd(ends.startTangent, 0, 0);
        for (std::size_t i = 1; i + 1 < count; ++i) addEquation(i - 1, i);
        addEnd(ends.endTangent, count - 1, count - 2);
        return solution();
    }

private:
    struct Equation {
        double before, own, after;
        Vector<3> right;
    };

    Vector<3> slope(std::size_t span) const
    {
        return (points[span + 1] - points[span]) * (1.0 / lengths[span]);
    }

    /// At the point between two spans.
    void addEquation(std::size_t span, std::size_t next)
    {
        const double a = lengths[span], b = lengths[next];
        equations.push_back({b, 2.0 * (a + b), a, 3.0 * (b * slope(span) + a * slope(next))});
    }

    void addEnd(const std::optional<Vector<3>>& tangent, std::size_t point, std::size_t span)
    {
        const double neighbour = tangent ? 0.0 : 1.0;
        equations.push_back({point == 0 ? 0.0 : neighbour, tangent ? 1.0 : 2.0, point == 0 ? neighbour : 0.0,
                             tangent ? tangent->unit() : 3.0 * slope(span)});
    }

    /// Forwards, then backwards; the diagonal outweighs the rest of each equation.
    std::vector<Vector<3>> solution()
    {
        std::vector<Vector<3>> result(equations.size());
        for (std::size_t i = 1; i < equations.size(); ++i) {
            const Equation& above = equations[i - 1];
            const double part = equations[i].before / above.own;
            equations[i].own -= part * above.after;
            equations[i].right += above.right * -part;
        }
        for (std::size_t i = equations.size(); i-- > 0;) {
            const Equation& own = equations[i];
            const Vector<3> known = i + 1 < equations.size() ? result[i + 1] * own.after : Vector<3>();
            result[i] = (own.right - known) * (1.0 / own.own);
        }
        return result;
    }

    /// The last point is the first one: its equation closes the circle. The two coefficients that stand
    /// beside the diagonals are taken out and brought in again as a multiple of a second solution.
    std::vector<Vector<3>> solveClosed()
    {
        const std::size_t last = count - 2;   // of the points that differ
        for (std::size_t i = 0; i <= last; ++i) addEquation(i == 0 ? last : i - 1, i);
        const double first = equations[0].before, end = equations[last].after, shift = -equations[0].own;
        equations[0].own -= shift;
        equations[last].own -= first * end / shift;
        const std::vector<Equation> matrix = equations;
        std::vector<Vector<3>> result = solution();
        equations = matrix;
        for (Equation& equation : equations) equation.right = {};
        equations[0].right[0] = shift;
        equations[last].right[0] = end;
        const std::vector<Vector<3>> other = solution();   // in the first component
        const double weight = first / shift;
        const Vector<3> excess =
            (result[0] + result[last] * weight) * (1.0 / (1.0 + other[0][0] + weight * other[last][0]));
        for (std::size_t i = 0; i <= last; ++i) result[i] += excess * -other[i][0];
        result.push_back(result[0]);
        return result;
    }

    const DXFLoop& points;
    const DXFCurveEnds& ends;
    const std::size_t count;
    std::vector<double> lengths;   // of the spans
    std::vector<Equation> equations;
};

}   // namespace

DXFLoop curveThrough(std::span<const Point<3>> given, const DXFCurveEnds& ends, int chordsPerSpan)
{
    DXFLoop points(given.begin(), given.end());
    points.erase(std::unique(points.begin(), points.end()), points.end());
    if (ends.closed && points.size() > 2 && points.front() != points.back()) points.push_back(points.front());
    const bool isRound = ends.closed && points.size() > 3;
    if (points.size() < 2) return points;
    DXFCurveEnds used = ends;
    used.closed = isRound;
    const std::vector<Vector<3>> derivatives = Derivatives(points, used).solve();
    DXFLoop curve{points.front()};
    for (std::size_t i = 0; i + 1 < points.size(); ++i) {
        const Vector<3> chord = points[i + 1] - points[i];
        const double length = chord.length();
        const Vector<3> start = derivatives[i] * length, end = derivatives[i + 1] * length;
        const Vector<3> second = chord * 3.0 - start * 2.0 - end, third = start + end - chord * 2.0;
        for (int k = 1; k < chordsPerSpan; ++k) {
            const double u = static_cast<double>(k) / chordsPerSpan;
            curve.push_back(points[i] + (start + (second + third * u) * u) * u);
        }
        curve.push_back(points[i + 1]);
    }
    return curve;
}

}   // namespace belvor
