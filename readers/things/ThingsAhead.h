#pragma once

#include "calcore/Plane.h"
#include "calcore/Point.h"
#include "readers/things/PlainText.h"
#include "scene/ModelBuilder.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string_view>
#include <vector>

namespace belvor {

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

/// Reads the vertices or the facets of a large Things file ahead, in pieces of its text, on several threads.
/// Only what PlainText takes is read so; what it gives is the same as without. Views are of the text.
class ThingsAhead {
public:
    /// So many threads, the asking one included. What is read is to be added to `model`.
    ThingsAhead(std::string_view text, unsigned threads, ModelBuilder& model) noexcept
        : whole(text),
          threadCount(threads),
          builder(model)
    {}

    /// Whether it is faster than without.
    static bool isWorthIt(std::string_view text, unsigned threads) noexcept
    {
        return threads > 1 && text.size() > smallestText;
    }

    /// As the function of that name, on so many threads: fresh pages of a mapped file take time too. Between
    /// parts of some megabytes `pause` is called, which may throw.
    static bool isTextModeSame(std::string_view bytes, unsigned threads, const std::function<void()>& pause);

    class Vertices {
    public:
        std::span<const Point<3>> positions() const noexcept { return {room.data(), size}; }

    private:
        friend class ThingsAhead;
        Point<3>& next()
        {
            if (size == room.size()) room.resize(std::max<std::size_t>(4096, 2 * size));
            return room[size];
        }

        // Written in place, which is much quicker than appending; it keeps its size from piece to piece.
        std::vector<Point<3>> room;
        std::size_t size = 0;
    };
    /// Reads vertices from `position` on. `add` gets those of each piece in order, on the calling thread, and
    /// answers whether it has taken them; then the next ones follow. Returns the position behind what was
    /// taken. Throws what `add` throws, std::bad_alloc.
    const char* vertices(const char* position, const std::function<bool(const Vertices&)>& add) const;

    class Facets {
    public:
        struct Run {
            std::size_t first;   ///< Facet of the piece.
            ThingsMaterial material;
        };
        std::vector<Run> runs;
        std::span<const Plane> planes() const noexcept { return {planeRoom.data(), size}; }
        std::span<const std::uint8_t> edgeCounts() const noexcept { return {countRoom.data(), size}; }
        std::span<const Edge> edges() const noexcept { return {edgeRoom.data(), edgesUsed}; }

    private:
        friend class ThingsAhead;
        void clear() noexcept
        {
            runs.clear();
            size = edgesUsed = 0;
        }
        void add(const PlainText::Facet& facet, const Model& model, std::uint32_t firstVertex);
        void grow();

        std::vector<Plane> planeRoom;
        std::vector<std::uint8_t> countRoom;
        std::vector<Edge> edgeRoom;
        std::size_t size = 0, edgesUsed = 0;
    };
    /// The same for facets of one loop, over the `vertices` of the model from `firstVertex` on.
    const char* facets(const char* position, std::uint32_t firstVertex, std::uint32_t vertices,
                       const std::function<bool(const Facets&)>& add) const;

private:
    static bool isTextModeSame(std::string_view bytes, unsigned threads);

    static constexpr std::size_t smallestText = std::size_t{4} << 20, pieceSize = std::size_t{128} << 10;

    template <class Items, class MayStart, class Read>
    const char* inPieces(const char* position, const MayStart& mayStart, const Read& read,
                         const std::function<bool(const Items&)>& add) const;

    const std::string_view whole;
    const unsigned threadCount;
    ModelBuilder& builder;
};

inline void ThingsAhead::Facets::add(const PlainText::Facet& facet, const Model& model,
                                     std::uint32_t firstVertex)
{
    if (size == planeRoom.size() || edgeRoom.size() - edgesUsed < PlainText::Facet::mostCorners) grow();
    planeRoom[size] = planeAndEdges(facet, model, firstVertex, edgeRoom.data() + edgesUsed);
    countRoom[size] = static_cast<std::uint8_t>(facet.count);
    ++size;
    edgesUsed += facet.count;
}

}   // namespace belvor
