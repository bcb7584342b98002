#include "readers/man/ManFile.h"

#include "errors/BadFile.h"
#include "errors/Reporter.h"
#include "readers/man/ManClump.h"
#include "readers/man/ManLines.h"

namespace belvor {
namespace {

constexpr std::string_view firstLine = "KRVT v5.1.0 MAN file";
constexpr std::int32_t lastUnit = 8;
constexpr std::int32_t mostNumber = 0x7FFFFFFF;

/// Asks the reporter on every 256th call; how far the work is goes by the bytes read.
class Checkpoint {
public:
    Checkpoint(const ManLines& read, Reporter& reporter) : lines(read), progress(reporter) {}
    void pass()
    {
        if (calls++ % 256 == 0) progress.check(1, 0, lines.fraction());
    }

private:
    const ManLines& lines;
    Reporter& progress;
    unsigned calls = 0;
};

double component(ManLines& lines)
{
    const double value = lines.real();
    if (!(value >= 0.0 && value <= 1.0)) lines.fail(BadFile::badReal);
    return value;
}

Point<3> position(ManLines& lines)
{
    const double x = lines.real();
    const double y = lines.real();
    const double z = lines.real();
    return {x, y, z};
}

std::uint32_t vertexNumber(ManLines& lines, std::int32_t vertices)
{
    const std::int32_t number = lines.integer();
    if (number < 1 || number > vertices) lines.fail(BadFile::vertexOutOfRange);
    return static_cast<std::uint32_t>(number);
}

std::uint32_t facetNumber(ManLines& lines, std::int32_t facets)
{
    const std::int32_t number = lines.integer();
    if (number < 0 || number > facets) lines.fail(BadFile::degenerateLoop);
    return static_cast<std::uint32_t>(number);
}

}   // namespace

ManFile::ManFile(std::string_view bytes, const std::string& name, Reporter& progress)
{
    ManLines lines(bytes, name);
    read(lines, progress);
}

void ManFile::read(ManLines& lines, Reporter& progress)
{
    lines.pauseWith([&] { progress.check(1, 0, lines.fraction()); });
    if (!lines.nextLine() || lines.line() != firstLine) lines.fail(BadFile::notManFile, 1);
    readHeader(lines, progress);
    while (lines.nextRecord(BadFile::pastEnd)) {
        if (lines.word() != "CLUMP") lines.fail(BadFile::clumpExpected);
        readClump(lines, progress);
    }
}

void ManFile::readHeader(ManLines& lines, Reporter& progress)
{
    Checkpoint checkpoint(lines, progress);
    for (;;) {
        checkpoint.pass();
        lines.requireRecord(BadFile::headerEnds);
        const std::string_view record = lines.word();
        if (record == "END") return;
        if (record == "UNITS") readUnits(lines);
        if (record == "MATERIAL") readMaterial(lines);
    }
}

void ManFile::readUnits(ManLines& lines)
{
    const auto code = static_cast<std::uint32_t>(lines.integer(0, lastUnit));
    const double scale = lines.real();
    if (!(scale > 0.0)) lines.fail(BadFile::badReal);
    builder.setUnits({scale, code});
}

void ManFile::readMaterial(ManLines& lines)
{
    const std::string name(lines.word());
    if (name.empty()) lines.failOnWord(name, BadFile::materialExpected);
    const double red = component(lines);
    const double green = component(lines);
    const double blue = component(lines);
    if (builder.model().materials().contains(name)) return;   // the first one stays, and no number is spent
    builder.addMaterial(name, {MaterialSequence::ofProgram().nextIndex(), {red, green, blue}, name});
}

void ManFile::readClump(ManLines& lines, Reporter& progress)
{
    lines.word();   // the clump's name
    const std::int32_t vertices = lines.integer(0, mostNumber);
    const std::int32_t facets = lines.integer(0, mostNumber);
    Checkpoint checkpoint(lines, progress);
    ManClump clump(builder);
    for (std::int32_t i = 0; i < vertices; ++i) {
        checkpoint.pass();
        lines.requireRecord(BadFile::pastEnd);
        clump.addVertex(position(lines));
    }
    for (std::int32_t i = 0; i < facets; ++i) {
        checkpoint.pass();
        lines.requireRecord(BadFile::pastEnd);
        clump.addFacet(builder.findMaterial(lines.word()));
    }
    lines.requireRecord(BadFile::pastEnd);
    if (lines.word() != "EDGE") lines.fail(BadFile::edgeRecordExpected);
    readEdges(lines, clump, vertices, facets, progress);
}

void ManFile::readEdges(ManLines& lines, ManClump& clump, std::int32_t vertices, std::int32_t facets,
                        Reporter& progress)
{
    const int edgeRecord = lines.lineNumber();
    const std::int32_t edges = lines.integer(0, mostNumber);
    Checkpoint checkpoint(lines, progress);
    for (std::int32_t i = 0; i < edges; ++i) {
        checkpoint.pass();
        lines.requireRecord(BadFile::edgeRecordEnds);
        const std::uint32_t from = vertexNumber(lines, vertices);
        const std::uint32_t to = vertexNumber(lines, vertices);
        const std::uint32_t left = facetNumber(lines, facets);
        clump.addEdge(from, to, left, facetNumber(lines, facets));
    }
    if (!clump.appendFacets(progress, lines.fraction())) lines.fail(BadFile::degenerateLoop, edgeRecord);
}

}   // namespace belvor
