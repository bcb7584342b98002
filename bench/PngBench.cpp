// Writing the rows of a picture as PNG, beside the two plain ways of packing the same rows with zlib's
// fastest level: as they are, and as differences from the row above. "bytes" is the size of the packed
// pixels.
#include "bench/Scenes.h"
#include "errors/Reporter.h"
#include "imagefile/ImageWriter.h"
#include "imagefile/PngFile.h"

#include <benchmark/benchmark.h>

#include <zlib.h>

#include <algorithm>
#include <cstdint>
#include <vector>

namespace belvor::bench {
namespace {

constexpr int pictureWidth = 1600, height = 1200;
constexpr std::size_t rowBytes = 3 * pictureWidth;

/// The colours of a picture.
class Colours : public Buffer {
public:
    Colours(const Model& model, const Scene& scene)
        : Buffer(pictureWidth),
          camera(*scene.camera),
          rgb(rowBytes * height)
    {
        SilentReporter silent;
        model.render(*scene.camera, *scene.lights, *this, silent);
    }
    void lineDone(int row) override
    {
        fillRow(*this, camera,
                {std::span(rgb).subspan(rowBytes * static_cast<std::size_t>(row), rowBytes), {}, {}});
    }
    const std::uint8_t* row(int y) const { return &rgb[rowBytes * static_cast<std::size_t>(y)]; }

private:
    const Camera& camera;
    std::vector<std::uint8_t> rgb;
};

const std::vector<Colours*>& pictures()
{
    static const auto* const all = [] {
        auto* const made = new std::vector<Colours*>;
        for (const Handle<Model>& model : {terrain(100000), city(100000), stack(200)})
            made->push_back(new Colours(*model, wholeScene(*model, pictureWidth, height)));
        return made;
    }();
    return *all;
}

void pngRows(benchmark::State& state)
{
    const Colours& picture = *pictures()[static_cast<std::size_t>(state.range(0))];
    std::size_t bytes = 0;
    for (auto _ : state) {
        bytes = 0;
        PngFile file([&bytes](const void*, std::size_t count) { bytes += count; }, pictureWidth, height);
        for (int y = 0; y < height; ++y) {
            std::copy_n(picture.row(y), rowBytes, file.row().begin());
            file.writeRow();
        }
        file.finishPixels();
        file.finish();
    }
    state.counters["bytes"] = static_cast<double>(bytes);
}

void plainRows(benchmark::State& state, bool differences)
{
    const Colours& picture = *pictures()[static_cast<std::size_t>(state.range(0))];
    std::vector<std::uint8_t> row(1 + rowBytes), packed(1 << 16);
    std::size_t bytes = 0;
    for (auto _ : state) {
        z_stream stream{};
        deflateInit(&stream, 1);
        for (int y = 0; y < height; ++y) {
            row[0] = differences ? 2 : 0;
            const std::uint8_t* const above = differences && y > 0 ? picture.row(y - 1) : nullptr;
            for (std::size_t i = 0; i < rowBytes; ++i)
                row[1 + i] = static_cast<std::uint8_t>(picture.row(y)[i] - (above ? above[i] : 0));
            stream.next_in = row.data();
            stream.avail_in = static_cast<uInt>(row.size());
            do {
                stream.next_out = packed.data();
                stream.avail_out = static_cast<uInt>(packed.size());
                deflate(&stream, y + 1 < height ? Z_NO_FLUSH : Z_FINISH);
            } while (stream.avail_out == 0);
        }
        bytes = stream.total_out;
        deflateEnd(&stream);
    }
    state.counters["bytes"] = static_cast<double>(bytes);
}

BENCHMARK(pngRows)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(plainRows, asTheyAre, false)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(plainRows, differences, true)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);

}   // namespace
}   // namespace belvor::bench
