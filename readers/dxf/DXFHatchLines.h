#pragma once

#include "readers/dxf/DXFAreas.h"

#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

namespace belvor {

/// The dashes that patterns put into the areas of a hatch, up to a limit: a file of a few lines may ask for
/// more than any memory holds.
class DXFHatchLines {
public:
    static constexpr std::size_t most = 100000;
    static constexpr std::size_t mostSteps = 50'000'000;   ///< Crossings and dashes looked at.

    /// `pauses` is called with a running count of these steps and may throw.
    explicit DXFHatchLines(std::function<void(std::size_t)> pauses) : pause(std::move(pauses)) {}

    /// A dash; a dot where both ends are equal.
    struct Dash {
        Point<2> from, to;
    };

    /// Adds those of one pattern in one area, its holes left out (even-odd). False when there are too many or
    /// take too many steps; then nothing of the hatch is to be drawn.
    bool add(const DXFArea& area, const DXFHatchPattern& pattern);

    const std::vector<Dash>& dashes() const noexcept { return all; }

private:
    /// Where a side of the area crosses a line of the pattern.
    struct Crossing {
        double line;    // lines from that through the base
        double along;   // from the line's own base
        friend auto operator<=>(const Crossing&,
                                const Crossing&) = default;   // NOLINT(modernize-use-nullptr)
    };

    bool addCrossings(const DXFLoop2& loop, const DXFHatchPattern& pattern, const Vector<2>& direction);
    bool addDashes(const DXFHatchPattern& pattern, const Vector<2>& direction, const Crossing& from,
                   double to);

    /// False when it was one too many.
    bool takeStep()
    {
        pause(++steps);
        return steps <= mostSteps;
    }

    const std::function<void(std::size_t)> pause;
    std::size_t steps = 0;
    std::vector<Dash> all;
    std::vector<Crossing> crossings;   // of the area at hand
};

}   // namespace belvor
