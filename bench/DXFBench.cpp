// Reading drawings: a million 3DFACEs as text and as binary, the same faces as one polyface
// mesh, and a block of a hundred faces inserted ten thousand times. Beside each file stand
// the limits of the same run: its bytes read once, its line ends sought, its numbers converted
// with nothing around them.
#include "bench/Limits.h"
#include "errors/Reporter.h"
#include "platform/Files.h"
#include "platform/MappedFile.h"
#include "platform/Process.h"
#include "readers/ModelFile.h"
#include "readers/dxf/DXFGroup.h"

#include <benchmark/benchmark.h>

#ifdef BELVOR_BENCH_ASSIMP
#include <assimp/Importer.hpp>
#include <assimp/scene.h>
#endif

#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>

namespace belvor::bench {
namespace {

/// Groups written as text, or in the binary encoding with two-byte codes.
class DrawingFile {
public:
    DrawingFile(std::string path, bool asBinary) : file(openFile(path, "wb")), binary(asBinary)
    {
        if (binary) std::fwrite("AutoCAD Binary DXF\r\n\x1a\0", 1, 22, file);
    }
    ~DrawingFile() { std::fclose(file); }

    void text(std::uint16_t code, const char* value)
    {
        if (!binary) return void(std::fprintf(file, "%3d\n%s\n", code, value));
        std::fwrite(&code, 2, 1, file);
        std::fwrite(value, std::strlen(value) + 1, 1, file);
    }
    void real(std::uint16_t code, double value)
    {
        if (!binary) return void(std::fprintf(file, "%3d\n%.6f\n", code, value));
        std::fwrite(&code, 2, 1, file);
        std::fwrite(&value, 8, 1, file);
    }
    void integer(std::uint16_t code, std::int16_t value)
    {
        if (!binary) return void(std::fprintf(file, "%3d\n%6d\n", code, value));
        std::fwrite(&code, 2, 1, file);
        std::fwrite(&value, 2, 1, file);
    }
    void point(std::uint16_t code, double x, double y, double z)
    {
        real(code, x);
        real(static_cast<std::uint16_t>(code + 10), y);
        real(static_cast<std::uint16_t>(code + 20), z);
    }
    void start(const char* section)
    {
        text(0, "SECTION");
        text(2, section);
    }
    void end(const char* with = "ENDSEC") { text(0, with); }

private:
    std::FILE* file;
    bool binary;
};

double height(int x, int y) { return 20.0 * std::sin(x * 0.01) * std::cos(y * 0.013); }

void writeFace(DrawingFile& to, int x, int y)
{
    to.text(0, "3DFACE");
    to.text(8, (x / 100) % 2 ? "HILLS" : "VALLEYS");
    to.point(10, x, y, height(x, y));
    to.point(11, x + 1, y, height(x + 1, y));
    to.point(12, x + 1, y + 1, height(x + 1, y + 1));
    to.point(13, x, y + 1, height(x, y + 1));
}

void writeFaces(DrawingFile& to)
{
    to.start("ENTITIES");
    for (int y = 0; y < 1000; ++y)
        for (int x = 0; x < 1000; ++x) writeFace(to, x, y);
    to.end();
    to.end("EOF");
}

/// A million faces over 32767 vertices a mesh, which is what a face's indices reach.
void writePolyfaces(DrawingFile& to)
{
    to.start("ENTITIES");
    for (int first = 0; first < 1000; first += 25) {
        to.text(0, "POLYLINE");
        to.text(8, "HILLS");
        to.integer(70, 64);
        for (int y = first; y <= first + 25; ++y)
            for (int x = 0; x <= 1000; ++x) {
                to.text(0, "VERTEX");
                to.text(8, "HILLS");
                to.point(10, x, y, height(x, y));
                to.integer(70, 192);
            }
        for (int y = 0; y < 25; ++y)
            for (int x = 1; x <= 1000; ++x) {
                const auto corner = static_cast<std::int16_t>(y * 1001 + x);
                to.text(0, "VERTEX");
                to.text(8, "HILLS");
                to.integer(70, 128);
                to.integer(71, corner);
                to.integer(72, static_cast<std::int16_t>(corner + 1));
                to.integer(73, static_cast<std::int16_t>(corner + 1002));
                to.integer(74, static_cast<std::int16_t>(corner + 1001));
            }
        to.text(0, "SEQEND");
    }
    to.end();
    to.end("EOF");
}

template <int faces>
void writeInsertions(DrawingFile& to)
{
    to.start("BLOCKS");
    to.text(0, "BLOCK");
    to.text(2, "TREE");
    to.point(10, 0, 0, 0);
    for (int i = 0; i < faces; ++i) writeFace(to, i % 10, i / 10);
    to.end("ENDBLK");
    to.end();
    to.start("ENTITIES");
    for (int i = 0; i < 10000; ++i) {
        to.text(0, "INSERT");
        to.text(8, "PARK");
        to.text(2, "TREE");
        to.point(10, i % 100 * 12, i / 100 * 12, 0);
        to.real(41, 1.0 + i % 7 * 0.1);
        to.real(50, i % 360);
    }
    to.end();
    to.end("EOF");
}

/// Written at first use, deleted at the end of the run.
struct Drawing {
    Drawing(const char* name, bool isBinary, void (*write)(DrawingFile&))
        : path(temporaryNameFor((std::filesystem::temp_directory_path() / name).string())),
          binary(isBinary)
    {
        {
            DrawingFile file(path, binary);
            write(file);
        }
        size = static_cast<double>(std::filesystem::file_size(path));
    }
    ~Drawing() { removeFile(path); }

    std::string path;
    bool binary;
    double size = 0;
};

const Drawing& textFaces()
{
    static const Drawing one("faces.dxf", false, writeFaces);
    return one;
}
const Drawing& binaryFaces()
{
    static const Drawing one("faces-b.dxf", true, writeFaces);
    return one;
}
const Drawing& textPolyfaces()
{
    static const Drawing one("polyface.dxf", false, writePolyfaces);
    return one;
}
const Drawing& insertions100()
{
    static const Drawing one("insert100.dxf", false, writeInsertions<100>);
    return one;
}
const Drawing& insertions6()
{
    static const Drawing one("insert6.dxf", false, writeInsertions<6>);
    return one;
}

void count(benchmark::State& state, const char* name, double amount)
{
    state.counters[name] = benchmark::Counter(amount, benchmark::Counter::kIsIterationInvariantRate,
                                              benchmark::Counter::kIs1000);
}

template <const Drawing& (*drawing)()>
void readBytesOnce(benchmark::State& state)
{
    const Drawing& one = drawing();   // written before the clock starts
    for (auto _ : state) {
        const MappedFile file(one.path);
        benchmark::DoNotOptimize(sumOfBytes(file.bytes()));
    }
    count(state, "bytes", one.size);
}

template <const Drawing& (*drawing)()>
void seekLineEnds(benchmark::State& state)
{
    const Drawing& one = drawing();
    for (auto _ : state) {
        const MappedFile file(one.path);
        const char* at = file.bytes().data();
        const char* const end = at + file.bytes().size();
        std::size_t lines = 0;
        while ((at = static_cast<const char*>(std::memchr(at, '\n', static_cast<std::size_t>(end - at))))) {
            ++at;
            ++lines;
        }
        benchmark::DoNotOptimize(lines);
    }
    count(state, "bytes", one.size);
}

double sumOfBinaryNumbers(std::string_view bytes)
{
    const char* at = bytes.data() + 22;
    const char* const end = bytes.data() + bytes.size();
    double sum = 0;
    while (at != end) {
        std::uint16_t code = 0;
        std::memcpy(&code, at, 2);
        at += 2;
        double real = 0;
        std::int16_t integer = 0;
        switch (valueTypeOf(code)) {
        default: break;   // not in this reading
        case DXFValueType::real:
            std::memcpy(&real, at, 8);
            sum += real;
            at += 8;
            break;
        case DXFValueType::integer16:
            std::memcpy(&integer, at, 2);
            sum += integer;
            at += 2;
            break;
        case DXFValueType::integer32: at += 4; break;
        case DXFValueType::text:
            at = static_cast<const char*>(std::memchr(at, 0, static_cast<std::size_t>(end - at))) + 1;
            break;
        }
    }
    return sum;
}

template <const Drawing& (*drawing)()>
void scanBareNumbers(benchmark::State& state)
{
    const Drawing& one = drawing();
    for (auto _ : state) {
        const MappedFile file(one.path);
        benchmark::DoNotOptimize(one.binary ? sumOfBinaryNumbers(file.bytes()) : sumOfNumbers(file.bytes()));
    }
    count(state, "bytes", one.size);
}

template <const Drawing& (*drawing)()>
void loopOverDigits(benchmark::State& state)
{
    const Drawing& one = drawing();
    Handle<Model> model;
    for (auto _ : state) {
        state.PauseTiming();
        model = {};
        state.ResumeTiming();
        const MappedFile file(one.path);
        model = digitLoopOfFaces(file.bytes());
    }
    count(state, "bytes", one.size);
}

template <const Drawing& (*drawing)()>
void readAs(benchmark::State& state, ReadingRules rules)
{
    const Drawing& one = drawing();
    SilentReporter silent;
    Handle<Model> model;
    for (auto _ : state) {
        state.PauseTiming();
        model = {};
        state.ResumeTiming();
        model = readModel(one.path, FileType::dxf, silent, {.rules = rules}).model;
    }
    count(state, "bytes", one.size);
    count(state, "facets", model->facetCount());
    state.counters["bytesPerFacet"] = static_cast<double>(model->memory()) / model->facetCount();
}

template <const Drawing& (*drawing)()>
void readDXF(benchmark::State& state)
{
    readAs<drawing>(state, ReadingRules::strict);
}

template <const Drawing& (*drawing)()>
void readModern(benchmark::State& state)
{
    readAs<drawing>(state, ReadingRules::modern);
}

#ifdef BELVOR_BENCH_ASSIMP
template <const Drawing& (*drawing)()>
void readByAssimp(benchmark::State& state)
{
    const Drawing& one = drawing();
    for (auto _ : state) {
        const MappedFile file(one.path);
        Assimp::Importer importer;
        const std::string_view bytes = file.bytes();
        if (!importer.ReadFileFromMemory(bytes.data(), bytes.size(), 0, "dxf"))
            state.SkipWithError(importer.GetErrorString());
    }
    count(state, "bytes", one.size);
}
#endif

#define BELVOR_DXF_BENCH(what, drawing)                                                                      \
    BENCHMARK(what<drawing>)->Name(#what "/" #drawing)->Unit(benchmark::kMillisecond)
BELVOR_DXF_BENCH(readBytesOnce, textFaces);
BELVOR_DXF_BENCH(seekLineEnds, textFaces);
BELVOR_DXF_BENCH(scanBareNumbers, textFaces);
BELVOR_DXF_BENCH(loopOverDigits, textFaces);
BELVOR_DXF_BENCH(readDXF, textFaces);
BELVOR_DXF_BENCH(readModern, textFaces);
BELVOR_DXF_BENCH(readBytesOnce, binaryFaces);
BELVOR_DXF_BENCH(scanBareNumbers, binaryFaces);
BELVOR_DXF_BENCH(readDXF, binaryFaces);
BELVOR_DXF_BENCH(readModern, binaryFaces);
BELVOR_DXF_BENCH(scanBareNumbers, textPolyfaces);
BELVOR_DXF_BENCH(readDXF, textPolyfaces);
BELVOR_DXF_BENCH(readModern, textPolyfaces);
#ifdef BELVOR_BENCH_ASSIMP
BELVOR_DXF_BENCH(readByAssimp, textFaces);
BELVOR_DXF_BENCH(readByAssimp, textPolyfaces);
#endif
BELVOR_DXF_BENCH(readDXF, insertions100);
BELVOR_DXF_BENCH(readModern, insertions100);
BELVOR_DXF_BENCH(readDXF, insertions6);
BELVOR_DXF_BENCH(readModern, insertions6);

}   // namespace
}   // namespace belvor::bench
