// Reading a Things file of a million triangles, beside two limits of the same run: reading
// its bytes once, and converting its numbers with nothing around them.
#include "bench/Limits.h"
#include "bench/Scenes.h"
#include "errors/Reporter.h"
#include "platform/Files.h"
#include "platform/MappedFile.h"
#include "platform/Process.h"
#include "readers/ModelFile.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>

namespace belvor::bench {
namespace {

/// A terrain written once, deleted at the end of the run.
class MillionTriangles {
public:
    MillionTriangles()
        : path(temporaryNameFor((std::filesystem::temp_directory_path() / "belvor-bench.thf").string()))
    {
        const Handle<Model> model = terrain(1000000);
        std::FILE* const file = openFile(path, "wb");
        std::fprintf(file, "Y %u\n", model->vertexCount());
        for (std::uint32_t i = 0; i < model->vertexCount(); ++i) {
            const Point<3>& p = model->vertex(i).position;
            std::fprintf(file, "%.6f %.6f %.6f\n", p[0], p[1], p[2]);
        }
        std::fprintf(file, "0\n%u\n", model->facetCount());
        for (std::uint32_t i = 0; i < model->facetCount(); ++i) {
            const std::uint32_t first = model->facet(i).firstEdge;
            std::fprintf(file, "1 Earth\n3 %u %u %u\n", model->edge(first).from + 1,
                         model->edge(first + 1).from + 1, model->edge(first + 2).from + 1);
        }
        std::fclose(file);
        size = static_cast<double>(std::filesystem::file_size(path));
    }
    ~MillionTriangles() { removeFile(path); }

    static const MillionTriangles& get()
    {
        static const MillionTriangles one;
        return one;
    }

    std::string path;
    double size = 0;
};

void countBytes(benchmark::State& state)
{
    state.counters["bytes"] =
        benchmark::Counter(MillionTriangles::get().size, benchmark::Counter::kIsIterationInvariantRate,
                           benchmark::Counter::kIs1000);
}

void readBytesOnce(benchmark::State& state)
{
    const MillionTriangles& triangles = MillionTriangles::get();   // written before the clock starts
    for (auto _ : state) {
        const MappedFile file(triangles.path);
        benchmark::DoNotOptimize(sumOfBytes(file.bytes()));
    }
    countBytes(state);
}

void scanBareNumbers(benchmark::State& state)
{
    const MillionTriangles& triangles = MillionTriangles::get();   // written before the clock starts
    for (auto _ : state) {
        const MappedFile file(triangles.path);
        benchmark::DoNotOptimize(sumOfNumbers(file.bytes()));
    }
    countBytes(state);
}

void readThings(benchmark::State& state)
{
    const MillionTriangles& triangles = MillionTriangles::get();
    SilentReporter silent;
    Handle<Model> model;
    for (auto _ : state) {
        state.PauseTiming();
        model = {};
        state.ResumeTiming();
        model = readModel(triangles.path, FileType::things, silent).model;
    }
    countBytes(state);
    state.counters["facets"] = benchmark::Counter(
        model->facetCount(), benchmark::Counter::kIsIterationInvariantRate, benchmark::Counter::kIs1000);
}

BENCHMARK(readBytesOnce)->Unit(benchmark::kMillisecond);
BENCHMARK(scanBareNumbers)->Unit(benchmark::kMillisecond);
BENCHMARK(readThings)->Unit(benchmark::kMillisecond);

}   // namespace
}   // namespace belvor::bench
