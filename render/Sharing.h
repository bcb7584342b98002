#pragma once

#include "errors/Reporter.h"
#include "platform/Workers.h"
#include "render/FacetFill.h"

#include <cstddef>

namespace belvor {

/// How a render shares its work among threads. The picture is the same for any values.
struct Sharing {
    unsigned threads = Workers::usualThreads();   ///< At most; less work than a few pieces takes fewer.
    std::size_t pieceSize = 1024;                 ///< Facets or vertices that a thread takes at a time.
    FacetFill fillFacets = fastestFacetFill();
};

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

private:
    Reporter& progress;
    const std::size_t interval;
    std::size_t next = 0;
};

}   // namespace belvor
