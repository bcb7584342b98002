// How the time grows with the work, as the exponent that fits best: time ~ size ^ exponent. 1 is in
// proportion. Each time is the least of five runs of one thread.
#include "bench/Scenes.h"
#include "errors/Reporter.h"
#include "readers/ModelFile.h"
#include "render/Frame.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <vector>

namespace belvor::bench {
namespace {

struct Measured {
    double size, seconds;
};

template <class Work>
double leastSeconds(Work work)
{
    double least = HUGE_VAL;
    for (int i = 0; i < 5; ++i) {
        const auto start = std::chrono::steady_clock::now();
        work();
        const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
        least = std::min(least, time.count());
    }
    return least;
}

/// The slope of the straight line nearest to the logarithms.
double exponentOf(const std::vector<Measured>& all)
{
    double n = 0, x = 0, y = 0, xx = 0, xy = 0;
    for (const Measured& one : all) {
        const double u = std::log(one.size), v = std::log(one.seconds);
        n += 1;
        x += u;
        y += v;
        xx += u * u;
        xy += u * v;
    }
    return (n * xy - x * y) / (n * xx - x * x);
}

double secondsOfFrame(const Model& model, int width, int height)
{
    const Scene scene = wholeScene(model, width, height);
    SilentReporter silent;
    const Handle<CountingBuffer> rows = makeHandle<CountingBuffer>(width);
    Frame frame(Sharing{1});
    return leastSeconds([&] { frame.render(model, *scene.camera, *scene.lights, *rows, silent); });
}

constexpr std::uint32_t facetCounts[] = {10000, 100000, 1000000, 4000000};

void frameByFacets(benchmark::State& state)
{
    std::vector<Measured> all;
    for (auto _ : state)
        for (const std::uint32_t facets : facetCounts)
            all.push_back({1.0 * facets, secondsOfFrame(*terrain(facets), 800, 600)});
    state.counters["exponent"] = exponentOf(all);
}

void frameByPixels(benchmark::State& state)
{
    const Handle<Model> model = terrain(100000);
    std::vector<Measured> all;
    for (auto _ : state)
        for (const int width : {800, 1600, 4000, 8000})
            all.push_back({0.75 * width * width, secondsOfFrame(*model, width, width * 3 / 4)});
    state.counters["exponent"] = exponentOf(all);
}

void loadingByFacets(benchmark::State& state)
{
    std::vector<Measured> all;
    for (auto _ : state)
        for (const std::uint32_t facets : facetCounts) {
            const ThingsFile file(facets);
            SilentReporter silent;
            all.push_back(
                {1.0 * facets, leastSeconds([&] { readModel(file.path, FileType::things, silent); })});
        }
    state.counters["exponent"] = exponentOf(all);
}

BENCHMARK(frameByFacets)->Iterations(1)->Unit(benchmark::kSecond);
BENCHMARK(frameByPixels)->Iterations(1)->Unit(benchmark::kSecond);
BENCHMARK(loadingByFacets)->Iterations(1)->Unit(benchmark::kSecond);

}   // namespace
}   // namespace belvor::bench
