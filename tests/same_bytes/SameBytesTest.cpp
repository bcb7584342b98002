#include "imagefile/OmbrBuff.h"
#include "render/Frame.h"
#include "render/Sharing.h"
#include "tests/render/RandomScenes.h"
#include "tests/support/Models.h"
#include "view/ViewCommands.h"

#include <gtest/gtest.h>

namespace belvor::test {
namespace {

constexpr std::uint64_t knownHash = 0x83be5c9ec2b27a9au;

ViewParameters randomView(RandomScenes& random, const ImageSize& size)
{
    const auto point = [&random](double reach) {
        return Point<3>{random.real(-reach, reach), random.real(-reach, reach), random.real(-reach, reach)};
    };
    ViewParameters view = wholeModel(freshView(), size);
    view.eye = point(random.whole(0, 2) == 0 ? 0.7 : 3.0);   // some from among the facets
    view.lookAt = point(0.5);
    view.zoom = random.real(0.2, 1.2);
    view.parallel = random.whole(0, 2) == 0;
    view.skyIntensity = random.real(0, 1);
    for (ParallelLightSetting& light : view.lights)
        light = {random.real(-180, 180), random.real(-90, 90),
                 random.whole(0, 1) == 0 ? 0.0 : random.real(0, 1)};
    return view;
}

void addTo(std::uint64_t& hash, const std::string& bytes)
{
    for (const char byte : bytes) hash = (hash ^ static_cast<unsigned char>(byte)) * 1099511628211u;
}

/// A hash of the image files of random scenes, drawn by threads as in `sharing`, with cameras and lights from
/// angles.
std::uint64_t hashOfScenes(const Sharing& sharing)
{
    const TempFile file("scene.omb");
    std::uint64_t hash = 14695981039346656037u;
    SilentReporter silent;
    Frame frame(sharing);
    for (int seed = 0; seed < 200; ++seed) {
        RandomScenes random(static_cast<std::uint64_t>(seed));
        const int facets = random.whole(5, 90), width = random.whole(30, 90), height = random.whole(20, 80);
        const Handle<Model> model = random.model(facets, seed % 4);
        const ImageSize size{width, height};
        const Scene scene = buildScene(randomView(random, size), placeOf(*model), size, width, height);
        const Handle<OmbrBuff> sink = makeHandle<OmbrBuff>(file.path(), model, scene.camera, width, height);
        frame.render(*model, *scene.camera, *scene.lights, *sink, silent);
        sink->finish();
        addTo(hash, file.bytes());
    }
    return hash;
}

}   // namespace

// One number for all builds that run the tests; tools/same_bytes.sh tries more compilers and processors.
TEST(SameBytes, ImageFilesOfRandomScenesAreTheSameInEveryBuildAndForAnyNumberOfThreads)
{
    for (const unsigned threads : {1, 2, 3, 8}) EXPECT_EQ(hashOfScenes({threads, 8}), knownHash) << threads;
    const FacetFills fills = runnableFacetFills();
    for (std::size_t i = 0; i + 1 < fills.count; ++i)   // the last one has just run
        for (const unsigned threads : {1, 3})
            EXPECT_EQ(hashOfScenes({threads, 8, fills.all[i]}), knownHash) << threads << ", vectors " << i;
}

}   // namespace belvor::test
