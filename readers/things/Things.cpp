#include "readers/things/Things.h"

#include "account/Account.h"
#include "calcore/TextMode.h"
#include "errors/BadFile.h"
#include "errors/Reporter.h"
#include "resources/Texts.h"

#include <algorithm>
#include <cstddef>

namespace belvor {
namespace {

constexpr std::ptrdiff_t longestHeader = 9, longestName = 31;
static_assert(longestName + 1 <= PlainText::longestMaterial, "a line that PlainText looks for");

bool separates(char c) { return isBlank(c) || c == '@'; }

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

/// count + 1 − loops, kept within its type whatever the file says.
std::int64_t facetsLeft(std::int64_t count, std::int64_t loops)
{
    constexpr std::int64_t bound = std::int64_t{1} << 60;
    return std::clamp(count, -bound, bound) + 1 - std::clamp(loops, -bound, bound);
}

}   // namespace

Things::Things(std::string_view bytes, const std::string& file, Reporter& reporter, Account& account)
    : path(file),
      progress(reporter)
{
    std::string copy;
    Text text(textModeBytes(bytes, copy, [this] { report(0.0); }));
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

std::uint32_t Things::readVertices(Text& text)
{
    std::int64_t count = 0;
    text.integer(count);
    for (std::int64_t i = 0; i < count; ++i) {
        if (i % 256 == 0) report(static_cast<double>(i) / (2.0 * static_cast<double>(count)));
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

void Things::readFacets(Text& text)
{
    std::int64_t count = 0;   // of loops in the file: every facet takes its own off
    text.integer(count);
    for (std::int64_t i = 0; i < count; ++i) {
        if (i % 64 == 0) report(static_cast<double>(i) / (2.0 * static_cast<double>(count)) + 0.5);
        PlainText::Facet facet;
        PlainText plain(text.position(), text.end());
        if (lastMaterialLine.empty() || !plain.takeFacet(lastMaterialLine, thingVertices, facet)) {
            count = facetsLeft(count, readFacet(text));
            continue;
        }
        addFacet(facet);
        text.moveTo(plain.position());
    }
}

/// Of the last material; the same as readFacet() and readLoop() add.
void Things::addFacet(const PlainText::Facet& facet)
{
    const auto positionOf = [this](std::uint32_t corner) -> const Point<3>& {
        return model().vertex(firstVertex + corner).position;
    };
    Edge sides[PlainText::Facet::mostCorners];
    Vector<3> normal;
    const Point<3>& start = positionOf(facet.corners[0]);
    const Point<3>* from = &start;
    for (unsigned i = 0; i < facet.count; ++i) {
        const std::uint32_t next = facet.corners[i + 1 == facet.count ? 0 : i + 1];
        const Point<3>* const to = i + 1 == facet.count ? &start : &positionOf(next);
        normal += from->vector().cross(to->vector());
        sides[i] = {firstVertex + facet.corners[i], firstVertex + next};
        from = to;
    }
    if (normal.length() == 0.0) normal = {0, 0, 1};
    builder.addFacet(*lastMaterial, Plane(normal, start));
    builder.addEdges({sides, facet.count});
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
    while (separates(last[-1])) --last;   // stops at the first character at the latest
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
