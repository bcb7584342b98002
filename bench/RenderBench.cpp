// Time per picture after loading, beside the bare filling of spans on this machine: one
// compare, one store of depth and owner and one addition a pixel.
#include "bench/Scenes.h"
#include "errors/Reporter.h"
#include "imagefile/OmbrBuff.h"
#include "platform/Files.h"
#include "platform/OutputFile.h"
#include "platform/Process.h"
#include "platform/Workers.h"
#include "render/Frame.h"
#include "render/Outlines.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <filesystem>
#include <limits>
#include <map>
#include <vector>

namespace belvor::bench {
namespace {

void bareSpanFill(benchmark::State& state)
{
    const std::size_t width = 4000, layers = 50;
    std::vector<double> depths(width);
    std::vector<std::uint32_t> owners(width);
    for (auto _ : state) {
        std::fill(depths.begin(), depths.end(), std::numeric_limits<double>::max());
        for (std::uint32_t layer = 0; layer < layers; ++layer) {
            double depth = -1.0 - layer * 0.01;
            const double step = 1e-5 * (layer % 7);
            for (std::size_t i = 0; i < width; ++i) {
                if (depth < depths[i]) {
                    depths[i] = depth;
                    owners[i] = layer;
                }
                depth += step;
            }
        }
        benchmark::DoNotOptimize(owners.data());
        benchmark::ClobberMemory();
    }
    state.counters["ns_per_pixel"] =
        benchmark::Counter(1e-9 * static_cast<double>(width * layers),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

enum Kind { terrain10k, terrain100k, terrain1M, city600k, stack200 };

/// Made when first asked for; the last one is kept.
Model& modelOf(Kind kind)
{
    static std::pair<int, Handle<Model>> kept{-1, {}};
    if (kept.first != kind) {
        kept = {kind, {}};
        switch (kind) {
        case terrain10k: kept.second = terrain(10000); break;
        case terrain100k: kept.second = terrain(100000); break;
        case terrain1M: kept.second = terrain(1000000); break;
        case city600k: kept.second = city(100000); break;
        case stack200: kept.second = stack(200); break;
        }
    }
    return *kept.second;
}

void renderToCounter(benchmark::State& state, Kind kind)
{
    Model& model = modelOf(kind);
    const int width = static_cast<int>(state.range(0)), height = static_cast<int>(state.range(1));
    const Scene scene = wholeScene(model, width, height);
    SilentReporter silent;
    const Handle<CountingBuffer> rows = makeHandle<CountingBuffer>(width);
    Frame frame(Sharing{static_cast<unsigned>(state.range(2))});
    frame.render(model, *scene.camera, *scene.lights, *rows, silent);   // the first one shades twice
    const auto start = std::chrono::steady_clock::now();
    const auto sharedBefore = Workers::ofProcess().timeInCalls();
    for (auto _ : state) {
        rows->covered = 0;
        frame.render(model, *scene.camera, *scene.lights, *rows, silent);
    }
    const std::chrono::duration<double> shared = Workers::ofProcess().timeInCalls() - sharedBefore,
                                        whole = std::chrono::steady_clock::now() - start;
    state.counters["facets"] = model.facetCount();
    state.counters["covered"] = static_cast<double>(rows->covered);
    state.counters["serial_percent"] = 100.0 * (1.0 - shared / whole);   // time that no other thread shares
}

/// What finding the edges of a whole model takes, once after loading.
void matchEdges(benchmark::State& state)
{
    const Model& model = modelOf(terrain1M);
    for (auto _ : state) {
        const Outlines outlines(model);
        benchmark::DoNotOptimize(outlines.size());
    }
}

void renderStyled(benchmark::State& state, const Model& model, const LineStyle& style)
{
    const int width = static_cast<int>(state.range(0)), height = static_cast<int>(state.range(1));
    const Scene scene = wholeScene(model, width, height);
    SilentReporter silent;
    const Handle<CountingBuffer> rows = makeHandle<CountingBuffer>(width);
    Frame frame(Sharing{1});
    frame.render(model, *scene.camera, *scene.lights, *rows, silent, style);
    for (auto _ : state) {
        rows->covered = 0;
        frame.render(model, *scene.camera, *scene.lights, *rows, silent, style);
    }
    state.counters["covered"] = static_cast<double>(rows->covered);
}

void renderEdges(benchmark::State& state)
{
    const Model& model = modelOf(terrain1M);
    const Outlines outlines(model);
    LineStyle style;
    style.outlines = &outlines;
    renderStyled(state, model, style);
}

/// A million chords of curves that run over and under a terrain of 100,000 triangles.
void renderCurves(benchmark::State& state)
{
    static const Handle<Model> model = terrainWithCurves(100000, 1000000);
    LineStyle style;
    style.curves = true;
    renderStyled(state, *model, style);
}

void renderToOmbrFile(benchmark::State& state, Kind kind)
{
    Model& model = modelOf(kind);
    const Handle<Model> handle(&model);
    const int width = static_cast<int>(state.range(0)), height = static_cast<int>(state.range(1));
    const Scene scene = wholeScene(model, width, height);
    const std::string path =
        temporaryNameFor((std::filesystem::temp_directory_path() / "belvor-bench.omb").string());
    SilentReporter silent;
    Frame frame(Sharing{static_cast<unsigned>(state.range(2))});
    for (auto _ : state) {
        const Handle<OmbrBuff> sink = makeHandle<OmbrBuff>(path, handle, scene.camera, width, height);
        frame.render(model, *scene.camera, *scene.lights, *sink, silent);
        sink->finish();
    }
    removeFile(path);
    state.counters["facets"] = model.facetCount();
}

class FixedRow : public Buffer {
public:
    using Buffer::Buffer;
    void lineDone(int) override {}
};

/// The file alone: a row of forty surfaces side by side, written again and again.
void writeOmbrFile(benchmark::State& state)
{
    Model& model = modelOf(stack200);
    const int width = static_cast<int>(state.range(0)), height = static_cast<int>(state.range(1));
    const Scene scene = wholeScene(model, width, height);
    const Handle<FixedRow> row = makeHandle<FixedRow>(width);
    SilentReporter silent;
    model.render(*scene.camera, *scene.lights, *row, silent);   // gives the row its facets and their colours
    row->clear();
    const double depth = -scene.camera->scale / (0.5 * (scene.camera->near + scene.camera->far));
    for (int i = 0; i < 40; ++i)
        row->fill({depth, 1e-9, static_cast<std::uint32_t>(i), i * width / 40, (i + 1) * width / 40});
    const std::string path =
        temporaryNameFor((std::filesystem::temp_directory_path() / "belvor-bench.omb").string());
    for (auto _ : state) {
        OmbrPicture picture(path, headerOf(model, *scene.camera, width, height));
        for (int y = 0; y < height; ++y) {
            fillRow(*row, *scene.camera, picture.row());
            picture.writeRow();
        }
        picture.finish();
    }
    removeFile(path);
}

/// The limit of the file alone: as many bytes of one row, again and again, through an output file of the same
/// kind with the same buffer.
void writeBareBytes(benchmark::State& state)
{
    const auto stride = static_cast<std::size_t>((9 * state.range(0) + 3) / 4 * 4);
    const std::vector<char> row(stride, 'x');
    const std::string path =
        temporaryNameFor((std::filesystem::temp_directory_path() / "belvor-bench.bytes").string());
    for (auto _ : state) {
        OutputFile file(path);
        for (std::int64_t y = 0; y < state.range(1); ++y) std::fwrite(row.data(), 1, stride, file.stream());
        file.commit();
    }
    removeFile(path);
}

void sizes(benchmark::internal::Benchmark* b)
{
    b->Args({800, 600})->Args({1600, 1200})->Args({4000, 3000})->Unit(benchmark::kMillisecond);
}

/// The same sizes by one thread and by two; the CPU column adds up what all threads took.
void sizesAndThreads(benchmark::internal::Benchmark* b)
{
    for (const int threads : {1, 2})
        b->Args({800, 600, threads})->Args({1600, 1200, threads})->Args({4000, 3000, threads});
    b->ArgNames({"", "", "threads"})->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();
}

BENCHMARK(bareSpanFill);
BENCHMARK_CAPTURE(renderToCounter, terrain10k, terrain10k)->Apply(sizesAndThreads);
BENCHMARK_CAPTURE(renderToCounter, terrain100k, terrain100k)->Apply(sizesAndThreads);
BENCHMARK_CAPTURE(renderToCounter, terrain1M, terrain1M)->Apply(sizesAndThreads);
BENCHMARK_CAPTURE(renderToOmbrFile, terrain1M, terrain1M)->Apply(sizesAndThreads);
BENCHMARK(matchEdges)->Unit(benchmark::kMillisecond);
BENCHMARK(renderEdges)->Apply(sizes);
BENCHMARK(renderCurves)->Apply(sizes);
BENCHMARK_CAPTURE(renderToCounter, city600k, city600k)->Apply(sizesAndThreads);
BENCHMARK_CAPTURE(renderToOmbrFile, city600k, city600k)->Apply(sizesAndThreads);
BENCHMARK_CAPTURE(renderToCounter, stack200, stack200)->Apply(sizesAndThreads);
BENCHMARK_CAPTURE(renderToOmbrFile, stack200, stack200)->Apply(sizesAndThreads);
BENCHMARK(writeOmbrFile)->Apply(sizes);
BENCHMARK(writeBareBytes)->Apply(sizes);

}   // namespace
}   // namespace belvor::bench
