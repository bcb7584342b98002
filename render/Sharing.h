#pragma once

#include "errors/Reporter.h"
#include "platform/Workers.h"
#include "render/FacetFill.h"
#include "render/Pauses.h"

#include <algorithm>
#include <chrono>
#include <cstddef>

namespace belvor {

/// How a render shares its work among threads. The picture is the same for any values.
struct Sharing {
    unsigned threads = Workers::usualThreads();   ///< At most; less work than a few pieces takes fewer.
    std::size_t pieceSize = 1024;                 ///< Facets or vertices that a thread takes at a time.
    /// The same where there are `count` of them, more of many: what a thread takes together is closer
    /// together in memory.
    std::size_t pieceOf(std::size_t count) const noexcept
    {
        constexpr std::size_t piecesOfThread = 16, most = 16;   // enough to share evenly
        return std::clamp<std::size_t>(count / (piecesOfThread * threads * pieceSize), 1, most) * pieceSize;
    }
    FacetFill fillFacets = fastestFacetFill();
    /// How long a reporter is left alone while rows and lines are drawn; none in tests, so that it is asked
    /// at every pause.
    std::chrono::milliseconds patience{10};
};

/// The pauses of a thread's part of shared work: the thread that asked for it calls `ask`, which throws to
/// stop; the others see to it that it does, and stop with it.
template <class Ask>
Pauses pausesOf(const Workers::Turn& turn, Ask ask)
{
    return Pauses([&turn, ask] {
        if (turn.thread == 0) return ask();
        turn.nudge();
        if (turn.stopping()) throw Reporter::Abandoned();
    });
}

/// Reports the first stage of a render from the thread that asked for it: one call for each
/// `interval` indices, in rising order, whichever thread works on them.
class StageReport {
public:
    StageReport(Reporter& reporter, std::size_t every) noexcept : progress(reporter), interval(every) {}

    /// Reports `fraction(index)` for the indices below `end` that have not been reported. Throws
    /// Reporter::Abandoned.
    template <class Fraction>
    void upTo(std::size_t end, Fraction fraction)
    {
        for (; next < end; next += interval) progress.check(2, 0, fraction(static_cast<double>(next)));
    }
    /// Reports again what was reported last. Throws Reporter::Abandoned.
    template <class Fraction>
    void again(Fraction fraction)
    {
        if (next > 0) progress.check(2, 0, fraction(static_cast<double>(next - interval)));
    }

private:
    Reporter& progress;
    const std::size_t interval;
    std::size_t next = 0;
};

}   // namespace belvor
