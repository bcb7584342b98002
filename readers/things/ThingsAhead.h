#pragma once

#include "calcore/Plane.h"
#include "calcore/Point.h"
#include "readers/things/PlainText.h"
#include "scene/Model.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

namespace belvor {

/// Reads the vertices or the facets of a large Things file ahead, in pieces of its text, on several threads.
/// Only what PlainText takes is read so; what it gives is the same as without. Views are of the text.
class ThingsAhead {
public:
    /// So many threads, the asking one included.
    ThingsAhead(std::string_view text, unsigned threads) noexcept : whole(text), threadCount(threads) {}

    /// Whether it is faster than without.
    static bool isWorthIt(std::string_view text, unsigned threads) noexcept
    {
        return threads > 1 && text.size() > smallestText;
    }

    /// Reads vertices from `position` on. `add` gets those of each piece in order, on the calling thread, and
    /// answers whether it has taken them; then the next ones follow. Returns the position behind what was
    /// taken. Throws what `add` throws, std::bad_alloc.
    const char* vertices(const char* position,
                         const std::function<bool(const std::vector<Point<3>>&)>& add) const;

    struct Facets {
        struct Run {
            std::size_t first;   ///< Facet of the piece.
            ThingsMaterial material;
        };
        std::vector<Run> runs;
        std::vector<Plane> planes;
        std::vector<std::uint8_t> counts;   ///< Of edges.
        std::vector<Edge> edges;
    };
    /// The same for facets of one loop, over the `vertices` of `model` from `firstVertex` on.
    const char* facets(const char* position, const Model& model, std::uint32_t firstVertex,
                       std::uint32_t vertices, const std::function<bool(const Facets&)>& add) const;

private:
    static constexpr std::size_t smallestText = std::size_t{4} << 20, pieceSize = std::size_t{256} << 10;

    template <class Items, class MayStart, class Read>
    const char* inPieces(const char* position, const MayStart& mayStart, const Read& read,
                         const std::function<bool(const Items&)>& add) const;

    const std::string_view whole;
    const unsigned threadCount;
};

/// The plane of a facet of one loop and its edges, one for each corner. Its corners count from `firstVertex`.
inline Plane planeAndEdges(const PlainText::Facet& facet, const Model& model, std::uint32_t firstVertex,
                           Edge* edges) noexcept
{
    const auto positionOf = [&](std::uint32_t corner) -> const Point<3>& {
        return model.vertex(firstVertex + corner).position;
    };
    Vector<3> normal;
    const Point<3>& start = positionOf(facet.corners[0]);
    const Point<3>* from = &start;
    for (unsigned i = 0; i < facet.count; ++i) {
        const std::uint32_t next = facet.corners[i + 1 == facet.count ? 0 : i + 1];
        const Point<3>* const to = i + 1 == facet.count ? &start : &positionOf(next);
        normal += from->vector().cross(to->vector());
        edges[i] = {firstVertex + facet.corners[i], firstVertex + next};
        from = to;
    }
    if (normal.length() == 0.0) normal = {0, 0, 1};
    return {normal, start};
}

}   // namespace belvor
