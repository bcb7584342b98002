#include "readers/things/ThingsAhead.h"

#include "calcore/TextMode.h"
#include "platform/Workers.h"
#include "readers/common/FreshPages.h"

#include <algorithm>
#include <atomic>

namespace belvor {
namespace {

constexpr std::ptrdiff_t longestSearch = 4096;   // for the start of a piece

}   // namespace

bool ThingsAhead::isTextModeSame(std::string_view bytes, unsigned threads, const std::function<void()>& pause)
{
    constexpr std::size_t bytesBetweenPauses = std::size_t{16} << 20;
    for (; bytes.size() > bytesBetweenPauses; bytes.remove_prefix(bytesBetweenPauses)) {
        if (!isTextModeSame(bytes.substr(0, bytesBetweenPauses), threads)) return false;
        pause();
    }
    return isTextModeSame(bytes, threads);
}

bool ThingsAhead::isTextModeSame(std::string_view bytes, unsigned threads)
{
    std::atomic<bool> same = true;
    const auto look = [&](std::size_t first, std::size_t end, const Workers::Turn&) {
        if (same && !belvor::isTextModeSame(bytes.substr(first, end - first))) same = false;
    };
    Workers::ofProcess().forPieces(threads, bytes.size(), std::size_t{1} << 20, look);
    return same;
}

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
    FreshPages pages(builder, static_cast<std::size_t>(end - position));
    const auto make = [&](std::size_t index, std::size_t slot, const Workers::Turn& turn) {
        if (over) return;
        if (turn.thread != 0) pages.provide();
        pieces[slot].stop = read(pieces[slot].items, startOf(index), startOf(index + 1));
    };
    const auto take = [&](std::size_t index, std::size_t slot) {
        if (over) return;
        const bool follows = taken == startOf(index) && add(pieces[slot].items);
        if (follows) {
            taken = pieces[slot].stop;
            pages.offer(static_cast<std::size_t>(end - taken));
        }
        over = !follows || taken != startOf(index + 1);
    };
    Workers::ofProcess().inOrder(threadCount, count, pieces.size(), make, take);
    return taken;
}

void ThingsAhead::Facets::grow()
{
    constexpr std::size_t atFirst = 4096;
    const std::size_t room = std::max(atFirst, 2 * planeRoom.size());
    planeRoom.resize(room);
    countRoom.resize(room);
    edgeRoom.resize(4 * room);
}

const char* ThingsAhead::vertices(const char* position, const std::function<bool(const Vertices&)>& add) const
{
    const auto read = [this](Vertices& vertices, const char* from, const char* to) {
        PlainText plain(from, whole.data() + whole.size());
        vertices.size = 0;
        while (plain.position() < to && plain.takeVertex(vertices.next())) ++vertices.size;
        return plain.position();
    };
    return inPieces(
        position, [](const char*) { return true; }, read, add);
}

const char* ThingsAhead::facets(const char* position, std::uint32_t firstVertex, std::uint32_t vertices,
                                const std::function<bool(const Facets&)>& add) const
{
    const Model& model = builder.model();
    const auto read = [&, this](Facets& facets, const char* from, const char* to) {
        PlainText plain(from, whole.data() + whole.size());
        facets.clear();
        ThingsMaterial material;
        while (plain.position() < to) {
            PlainText::Facet facet;
            if (material.line.empty() || !plain.takeFacet(material.line, vertices, facet)) {
                if (!plain.findMaterial(material) || !plain.takeFacet(material.line, vertices, facet)) break;
                facets.runs.push_back({facets.size, material});
            }
            facets.add(facet, model, firstVertex);
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
