#include "readers/dxf/DXFHatchLines.h"

#include "calcore/Angle.h"

#include <algorithm>
#include <cmath>

namespace belvor {
namespace {

constexpr double exact = 1e15;   // numbers below it still tell one line from the next

double across(const Vector<2>& direction, const Vector<2>& v) noexcept
{
    return direction[0] * v[1] - direction[1] * v[0];
}

}   // namespace

bool DXFHatchLines::add(const DXFArea& area, const DXFHatchPattern& pattern)
{
    const Angle angle = Angle::degrees(pattern.degrees);
    const Vector<2> direction(angle.cos(), angle.sin());
    crossings.clear();
    for (const DXFLoop2& loop : area)
        if (!addCrossings(loop, pattern, direction)) return false;
    std::sort(crossings.begin(), crossings.end());
    for (std::size_t i = 0; i + 1 < crossings.size(); i += 2)   // an even number on each line
        if (!addDashes(pattern, direction, crossings[i], crossings[i + 1].along)) return false;
    return true;
}

/// A corner on a line counts for the side that leads to higher lines, so each line is crossed an even number
/// of times.
bool DXFHatchLines::addCrossings(const DXFLoop2& loop, const DXFHatchPattern& pattern,
                                 const Vector<2>& direction)
{
    const double step = across(direction, pattern.offset), shift = dot(direction, pattern.offset);
    const bool onlyOne = step == 0.0;   // all lines lie on each other
    for (std::size_t i = 0; i < loop.size(); ++i) {
        const Vector<2> a = loop[i] - pattern.base, b = loop[(i + 1) % loop.size()] - pattern.base;
        const double lineA = across(direction, a) / (onlyOne ? 1.0 : step),
                     lineB = across(direction, b) / (onlyOne ? 1.0 : step);
        const double low = std::min(lineA, lineB), high = std::max(lineA, lineB);
        if (!(low > -exact && high < exact)) return false;
        const double alongA = dot(direction, a), alongB = dot(direction, b);
        const auto cross = [&](double line) {
            crossings.push_back(
                {line, alongA + (alongB - alongA) * ((line - lineA) / (lineB - lineA)) - line * shift});
        };
        if (onlyOne) {
            if (low <= 0.0 && 0.0 < high) cross(0.0);
            continue;
        }
        if (high - low + static_cast<double>(crossings.size()) > 4.0 * most) return false;
        for (double line = std::ceil(low); line < high; ++line) {
            if (!takeStep()) return false;
            cross(line);
        }
    }
    return true;
}

/// The dashes of a line from one crossing to the next.
bool DXFHatchLines::addDashes(const DXFHatchPattern& pattern, const Vector<2>& direction,
                              const Crossing& from, double to)
{
    const Point<2> base = pattern.base + pattern.offset * from.line;
    const auto put = [&](double start, double end) {
        all.push_back({base + direction * start, base + direction * end});
        return all.size() <= most;
    };
    double period = 0.0;
    for (const double dash : pattern.dashes) period += std::fabs(dash);
    if (!(period > 0.0)) return from.along == to || put(from.along, to);
    const double first = std::floor(from.along / period);
    if (!(std::fabs(first) < exact)
        || (to - from.along) / period * static_cast<double>(pattern.dashes.size()) > most)
        return false;
    for (double turn = first; turn * period < to; ++turn) {
        double start = turn * period;
        for (const double dash : pattern.dashes) {
            if (!takeStep()) return false;   // gaps put nothing
            const double end = start + std::fabs(dash);
            const double low = std::max(start, from.along), high = std::min(end, to);
            if (dash >= 0.0 && (dash > 0.0 ? low < high : low == high) && !put(low, high)) return false;
            start = end;
        }
    }
    return true;
}

}   // namespace belvor
