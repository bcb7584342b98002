#include "readers/things/ThingsAhead.h"

#include "platform/Workers.h"

#include <algorithm>
#include <atomic>

namespace belvor {
namespace {

constexpr std::ptrdiff_t longestSearch = 4096;   // for the start of a piece

}   // namespace

/// `read` fills a piece with what stands from `from` to `to`, or with its beginning. Pieces start at the end
/// of a line where `mayStart` says so.
template <class Items, class MayStart, class Read>
const char* ThingsAhead::inPieces(const char* position, const MayStart& mayStart, const Read& read,
                                  const std::function<bool(const Items&)>& add) const
{
    const char* const end = whole.data() + whole.size();
    const std::size_t count = (static_cast<std::size_t>(end - position) + pieceSize - 1) / pieceSize;
    const auto startOf = [&, count](std::size_t index) {
        if (index == 0 || index == count) return index == 0 ? position : end;
        const char* at = position + index * pieceSize;
        const char* const last = at + std::min<std::ptrdiff_t>(longestSearch, end - at);
        while ((at = std::find(at, last, '\n')) != last && !mayStart(at)) ++at;
        return at;
    };
    struct Piece {
        Items items;
        const char* stop = nullptr;   // behind what has been read of it
    };
    std::vector<Piece> pieces(std::size_t{2} * threadCount);
    const char* taken = position;
    std::atomic<bool> over = false;
    const auto make = [&](std::size_t index, std::size_t slot, const Workers::Turn&) {
        if (!over) pieces[slot].stop = read(pieces[slot].items, startOf(index), startOf(index + 1));
    };
    const auto take = [&](std::size_t index, std::size_t slot) {
        if (over) return;
        const bool follows = taken == startOf(index) && add(pieces[slot].items);
        if (follows) taken = pieces[slot].stop;
        over = !follows || taken != startOf(index + 1);
    };
    Workers::ofProcess().inOrder(threadCount, count, pieces.size(), make, take);
    return taken;
}

const char* ThingsAhead::vertices(const char* position,
                                  const std::function<bool(const std::vector<Point<3>>&)>& add) const
{
    const auto read = [this](std::vector<Point<3>>& vertices, const char* from, const char* to) {
        PlainText plain(from, whole.data() + whole.size());
        vertices.clear();
        for (Point<3> vertex; plain.position() < to && plain.takeVertex(vertex);) vertices.push_back(vertex);
        return plain.position();
    };
    return inPieces(
        position, [](const char*) { return true; }, read, add);
}

const char* ThingsAhead::facets(const char* position, const Model& model, std::uint32_t firstVertex,
                                std::uint32_t vertices, const std::function<bool(const Facets&)>& add) const
{
    const auto read = [&, this](Facets& facets, const char* from, const char* to) {
        PlainText plain(from, whole.data() + whole.size());
        facets.runs.clear();
        facets.planes.clear();
        facets.counts.clear();
        facets.edges.clear();
        ThingsMaterial material;
        while (plain.position() < to) {
            PlainText::Facet facet;
            if (material.line.empty() || !plain.takeFacet(material.line, vertices, facet)) {
                if (!plain.findMaterial(material) || !plain.takeFacet(material.line, vertices, facet)) break;
                facets.runs.push_back({facets.planes.size(), material});
            }
            Edge edges[PlainText::Facet::mostCorners];
            facets.planes.push_back(planeAndEdges(facet, model, firstVertex, edges));
            facets.counts.push_back(static_cast<std::uint8_t>(facet.count));
            facets.edges.insert(facets.edges.end(), edges, edges + facet.count);
        }
        return plain.position();
    };
    const auto mayStart = [this](const char* at) {
        ThingsMaterial material;
        return PlainText(at, whole.data() + whole.size()).findMaterial(material);
    };
    return inPieces(position, mayStart, read, add);
}

}   // namespace belvor
