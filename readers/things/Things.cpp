#include "readers/things/Things.h"

#include "account/Account.h"
#include "calcore/TextMode.h"
#include "errors/BadFile.h"
#include "errors/Reporter.h"
#include "resources/Texts.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <span>

namespace belvor {
namespace {

constexpr std::ptrdiff_t longestHeader = 9, longestName = 31;
static_assert(longestName + 1 <= PlainText::longestMaterial, "a line that PlainText looks for");

constexpr std::int64_t verticesAReport = 256, facetsAReport = 64;
constexpr std::int64_t itemsBetweenTries = 65536;   // to read ahead again
constexpr std::int64_t fewItems = 16384;            // not worth waking threads for
constexpr std::int64_t mostFacets = std::int64_t{1} << 60;

/// Whether another thing follows; its header word is taken off. The word ends before a
/// space, and only there, or after nine characters.
bool takeHeader(Scanner<'@'>& text)
{
    if (!text.skipBlanks()) return false;
    const char* const word = text.position();
    const char* const limit = word + std::min(longestHeader, text.end() - word);
    text.moveTo(std::find(word, limit, ' '));
    return *word == 'Y' || *word == 'y';
}

/// Items from number `index` on, up to the next that is reported.
std::size_t untilReport(std::int64_t index, std::int64_t itemsAReport)
{
    return static_cast<std::size_t>(itemsAReport - index % itemsAReport);
}

/// count + 1 − loops, kept within its type whatever the file says.
std::int64_t facetsLeft(std::int64_t count, std::int64_t loops)
{
    return std::clamp(count, -mostFacets, mostFacets) + 1 - std::clamp(loops, -mostFacets, mostFacets);
}

}   // namespace

Things::Things(std::string_view bytes, const std::string& file, Reporter& reporter, Account& account,
               unsigned threads)
    : path(file),
      progress(reporter)
{
    const auto pause = [this] { report(0.0); };
    std::string copy;
    if (!ThingsAhead::isTextModeSame(bytes, threads, pause)) bytes = textModeBytes(bytes, copy, pause);
    Text text(bytes);
    if (ThingsAhead::isWorthIt(bytes, threads)) ahead.emplace(bytes, threads, builder);
    bool whole = true;
    while (takeHeader(text)) {
        readThing(text);
        whole = !text.failed();
    }
    if (!whole) account.warn(textOf(belvor::Text::thingsBreakOff));
}

void Things::report(double done)
{
    fraction = done;
    progress.check(0, things, fraction);
}

/// For long lists between the reports: the same again after some thousands of steps.
void Things::pauseEvery(std::int64_t step)
{
    constexpr std::int64_t stepsBetweenReports = 8192;
    if (step % stepsBetweenReports == stepsBetweenReports - 1) report(fraction);
}

void Things::readThing(Text& text)
{
    firstVertex = model().vertexCount();
    thingVertices = readVertices(text);
    fraction = 0.5;
    readEdges(text);
    readFacets(text);
    ++things;
}

void Things::reportVertex(std::int64_t index, std::int64_t count)
{
    if (index % verticesAReport == 0) report(static_cast<double>(index) / (2.0 * static_cast<double>(count)));
}

/// Not for each of many small things: a try costs about as much as reading a few hundred items.
bool Things::triesAhead(std::int64_t index, std::int64_t count) const noexcept
{
    return ahead && index % itemsBetweenTries == 0 && count - index >= fewItems;
}

std::uint32_t Things::readVertices(Text& text)
{
    std::int64_t count = 0;
    text.integer(count);
    for (std::int64_t i = 0; i < count; ++i) {
        if (triesAhead(i, count)) i += readVerticesAhead(text, i, count);
        if (i == count) break;
        reportVertex(i, count);
        Point<3> vertex;
        if (PlainText plain(text.position(), text.end()); plain.takeVertex(vertex)) {
            builder.addVertex(vertex);
            text.moveTo(plain.position());
            continue;
        }
        double x = 0, y = 0, z = 0;
        if (!text.real(x) || !text.real(y) || !text.real(z)) break;
        builder.addVertex({x, y, z});
    }
    return model().vertexCount() - firstVertex;
}

/// How many, from number `done` on.
std::int64_t Things::readVerticesAhead(Text& text, std::int64_t done, std::int64_t count)
{
    std::int64_t next = done;
    text.moveTo(ahead->vertices(text.position(), [&](const ThingsAhead::Vertices& vertices) {
        std::span<const Point<3>> left = vertices.positions();
        if (static_cast<std::int64_t>(left.size()) > count - next) return false;   // others follow them
        while (!left.empty()) {
            const auto these = std::min<std::size_t>(left.size(), untilReport(next, verticesAReport));
            reportVertex(next, count);
            builder.addVertices(left.first(these));
            left = left.subspan(these);
            next += static_cast<std::int64_t>(these);
        }
        return true;
    }));
    return next - done;
}

/// The edges are checked and forgotten: those of the model come from the loops of facets.
void Things::readEdges(Text& text)
{
    std::int64_t count = 0;
    text.integer(count);
    for (std::int64_t i = 0; i < count; ++i) {
        pauseEvery(i);
        readVertexNumber(text);
        readVertexNumber(text);
        std::string_view line;
        readMaterialName(text, line);
    }
}

void Things::reportFacet(std::int64_t index, std::int64_t count)
{
    if (index % facetsAReport == 0)
        report(static_cast<double>(index) / (2.0 * static_cast<double>(count)) + 0.5);
}

void Things::readFacets(Text& text)
{
    std::int64_t count = 0;   // of loops in the file: every facet takes its own off
    text.integer(count);
    for (std::int64_t i = 0; i < count; ++i) {
        if (triesAhead(i, count)) i += readFacetsAhead(text, i, count);
        if (i == count) break;
        reportFacet(i, count);
        PlainText::Facet facet;
        PlainText plain(text.position(), text.end());
        if (lastMaterialLine.empty() || !plain.takeFacet(lastMaterialLine, thingVertices, facet)) {
            count = facetsLeft(count, readFacet(text));
            continue;
        }
        Edge sides[PlainText::Facet::mostCorners];
        const Plane plane = planeAndEdges(facet, model(), firstVertex, sides);
        builder.addFacet(*lastMaterial, plane, {sides, facet.count});
        text.moveTo(plain.position());
    }
}

/// How many, from number `done` on.
std::int64_t Things::readFacetsAhead(Text& text, std::int64_t done, std::int64_t count)
{
    if (count > mostFacets) return 0;   // each facet would change it
    std::int64_t next = done;
    const auto add = [&](const ThingsAhead::Facets& facets) {
        const auto planes = facets.planes();
        if (static_cast<std::int64_t>(planes.size()) > count - next) return false;   // others follow them
        auto run = facets.runs.begin();
        const Edge* edges = facets.edges().data();
        for (std::size_t i = 0, end = 0; i < planes.size(); i = end) {
            reportFacet(next, count);
            if (run != facets.runs.end() && run->first == i) {
                materialNamed(run->material.name);
                lastMaterialLine = (run++)->material.line;
            }
            const std::size_t runEnd = run == facets.runs.end() ? planes.size() : run->first;
            end = std::min(runEnd, i + untilReport(next, facetsAReport));
            const std::size_t these = end - i;
            const auto edgeCounts = facets.edgeCounts().subspan(i, these);
            const Edge* const edgesEnd = std::accumulate(edgeCounts.begin(), edgeCounts.end(), edges);
            builder.addFacets(*lastMaterial, planes.subspan(i, these), edgeCounts, {edges, edgesEnd});
            edges = edgesEnd;
            next += static_cast<std::int64_t>(these);
        }
        return true;
    };
    text.moveTo(ahead->facets(text.position(), firstVertex, thingVertices, add));
    return next - done;
}

/// The number of its loops.
std::int64_t Things::readFacet(Text& text)
{
    std::int64_t loops = 0;
    text.integer(loops);
    Facet& facet = builder.addFacet(materialNamed(readMaterialName(text, lastMaterialLine)));
    Vector<3> normal;
    std::uint32_t start = 0;
    for (std::int64_t i = 0; i < loops; ++i) {
        pauseEvery(i);
        start = readLoop(text, normal);
    }
    if (normal.length() == 0.0) normal = {0, 0, 1};
    facet.plane = Plane(normal, loops < 1 ? Point<3>::origin() : model().vertex(start).position);
    return loops;
}

/// The first vertex of the loop.
std::uint32_t Things::readLoop(Text& text, Vector<3>& normal)
{
    std::int64_t count = 0;
    text.integer(count);
    if (count < 1) throw BadFile(BadFile::degenerateLoop, path, BadFile::noLine);
    const std::uint32_t start = readVertexNumber(text);
    std::uint32_t from = start;
    for (std::int64_t i = 1; i < count; ++i) {
        pauseEvery(i);
        const std::uint32_t to = readVertexNumber(text);
        addSide(from, to, normal);
        from = to;
    }
    addSide(from, start, normal);
    return start;
}

/// A vertex of the thing by its number in the file, as its index in the store.
std::uint32_t Things::readVertexNumber(Text& text)
{
    std::int64_t number = 0;
    text.integer(number);
    if (number < 1 || number > thingVertices) throw BadFile(BadFile::vertexOutOfRange, path, BadFile::noLine);
    return firstVertex + static_cast<std::uint32_t>(number) - 1;
}

/// The rest of the line, unless a digit follows: then the number is not part of a name. `line`: as it stands,
/// with its end, if that is not too far.
std::string_view Things::readMaterialName(Text& text, std::string_view& line)
{
    if (!text.skipBlanks()) throw BadFile(BadFile::materialExpected, path, BadFile::noLine);
    const char* const first = text.position();
    line = {};
    if (isDigit(*first)) return "DEFAULT";
    const char* const limit = first + std::min(longestName, text.end() - first);
    const char* last = std::find(first, limit, '\n');
    line = last == limit ? std::string_view() : std::string_view(first, last + 1);
    text.moveTo(last);
    while (separatesThings(last[-1])) --last;   // stops at the first character at the latest
    return {first, static_cast<std::size_t>(last - first)};
}

const Material& Things::materialNamed(std::string_view name)
{
    if (!lastMaterial || lastMaterial->name != name) lastMaterial = &builder.findMaterial(name);
    return *lastMaterial;
}

/// Adds an edge, and its share of twice the area seen from the origin (Newell's sum).
void Things::addSide(std::uint32_t from, std::uint32_t to, Vector<3>& normal)
{
    builder.addEdge(from, to);
    normal += model().vertex(from).position.vector().cross(model().vertex(to).position.vector());
}

}   // namespace belvor
