// A million calls each, on angles as views have them.
#include "calcore/Trigonometry.h"

#include <benchmark/benchmark.h>

#include <vector>

namespace belvor::bench {
namespace {

std::vector<double> angles()
{
    std::vector<double> values(1000000);
    for (std::size_t i = 0; i < values.size(); ++i) values[i] = static_cast<double>(i) * 1.3e-5 - 6.5;
    return values;
}

template <class Function>
void millionCalls(benchmark::State& state, Function function)
{
    const std::vector<double> values = angles();
    for (auto _ : state) {
        double sum = 0.0;
        for (const double value : values) sum += function(value);
        benchmark::DoNotOptimize(sum);
    }
}

BENCHMARK_CAPTURE(millionCalls, sine, [](double value) {
    return sine(value);
})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(millionCalls, cosine, [](double value) {
    return cosine(value);
})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(millionCalls, arctangent, [](double value) {
    return arctangent(value, 0.7);
})->Unit(benchmark::kMillisecond);

}   // namespace
}   // namespace belvor::bench
