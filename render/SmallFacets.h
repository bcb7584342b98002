#pragma once

#include "render/RowSpans.h"
#include "render/ScreenEdge.h"

#include <cstdint>

namespace belvor {

/// Turns facets of a few edges and a few rows, the most of a large model, into their spans
/// at once, while their corners are in the cache.
class SmallFacets {
public:
    static constexpr std::uint32_t maxEdges = 4;
    static constexpr int maxRows = 8;

    /// Spans of pictures of that size go into `target`, which must outlive this.
    SmallFacets(int pictureWidth, int pictureHeight, RowSpans& target) noexcept
        : width(pictureWidth),
          height(pictureHeight),
          spans(target)
    {}

    /// Adds the spans of the facet of that index: `edgeCount` edges, at most maxEdges, all of it in
    /// front of the eye and within `rows`, at most maxRows. False, with nothing added, when a row is
    /// not a simple span between two edges.
    bool add(const EdgeEnds* ends, std::uint32_t edgeCount, std::uint32_t facet, EdgeRows rows) const;

private:
    const int width, height;
    RowSpans& spans;
};

}   // namespace belvor
