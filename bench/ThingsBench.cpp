// Reading a Things file of a million triangles, beside limits of the same run: reading its bytes once,
// converting its numbers with nothing around them, and a bare loop over digits into a model.
#include "bench/Limits.h"
#include "bench/Scenes.h"
#include "errors/Reporter.h"
#include "platform/MappedFile.h"
#include "readers/ModelFile.h"

#include <benchmark/benchmark.h>

namespace belvor::bench {
namespace {

const ThingsFile& millionTriangles()
{
    static const ThingsFile one(1000000);
    return one;
}

void countBytes(benchmark::State& state)
{
    state.counters["bytes"] = benchmark::Counter(
        millionTriangles().size, benchmark::Counter::kIsIterationInvariantRate, benchmark::Counter::kIs1000);
}

void readBytesOnce(benchmark::State& state)
{
    const ThingsFile& triangles = millionTriangles();   // written before the clock starts
    for (auto _ : state) {
        const MappedFile file(triangles.path);
        benchmark::DoNotOptimize(sumOfBytes(file.bytes()));
    }
    countBytes(state);
}

void scanBareNumbers(benchmark::State& state)
{
    const ThingsFile& triangles = millionTriangles();   // written before the clock starts
    for (auto _ : state) {
        const MappedFile file(triangles.path);
        benchmark::DoNotOptimize(sumOfNumbers(file.bytes()));
    }
    countBytes(state);
}

void loopOverDigits(benchmark::State& state)
{
    const ThingsFile& triangles = millionTriangles();
    Handle<Model> model;
    for (auto _ : state) {
        state.PauseTiming();
        model = {};
        state.ResumeTiming();
        const MappedFile file(triangles.path);
        model = digitLoopOfThings(file.bytes());
    }
    countBytes(state);
}

void readThings(benchmark::State& state)
{
    const ThingsFile& triangles = millionTriangles();
    SilentReporter silent;
    Handle<Model> model;
    for (auto _ : state) {
        state.PauseTiming();
        model = {};
        state.ResumeTiming();
        model = readModel(triangles.path, FileType::things, silent,
                          {.threads = static_cast<unsigned>(state.range(0))})
                    .model;
    }
    countBytes(state);
    state.counters["facets"] = benchmark::Counter(
        model->facetCount(), benchmark::Counter::kIsIterationInvariantRate, benchmark::Counter::kIs1000);
}

BENCHMARK(readBytesOnce)->Unit(benchmark::kMillisecond);
BENCHMARK(scanBareNumbers)->Unit(benchmark::kMillisecond);
BENCHMARK(loopOverDigits)->Unit(benchmark::kMillisecond);
BENCHMARK(readThings)->ArgName("threads")->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond)->UseRealTime();

}   // namespace
}   // namespace belvor::bench
