#include "imagefile/OmbrBuff.h"
#include "render/Frame.h"
#include "render/Sharing.h"
#include "tests/support/Models.h"
#include "view/ViewCommands.h"

#include <gtest/gtest.h>

namespace belvor::test {
namespace {

constexpr std::uint64_t knownHash = 0xb404c9f7ab963c50u;

/// The same numbers everywhere, which the distributions of the library do not promise.
class Random {
public:
    explicit Random(int seed) : state(static_cast<std::uint64_t>(seed) * 2862933555777941757u + 3037000493u)
    {}

    std::uint32_t below(std::uint32_t limit)
    {
        state = state * 6364136223846793005u + 1442695040888963407u;
        return static_cast<std::uint32_t>((state >> 33) % limit);
    }
    double real(double low, double high) { return low + (high - low) * (below(1u << 30) * 0x1p-30); }
    Point<3> point(double reach) { return {real(-reach, reach), real(-reach, reach), real(-reach, reach)}; }

private:
    std::uint64_t state;
};

Handle<Model> randomModel(Random& random)
{
    const Handle<Model> model = makeHandle<Model>();
    const Material* materials[3];
    for (std::uint16_t i = 0; i < 3; ++i) {
        const std::string name(1, static_cast<char>('a' + i));
        const Colour colour{random.real(0, 1), random.real(0, 1), random.real(0, 1)};
        materials[i] = &model->addMaterial(name, {static_cast<std::uint16_t>(i + 1), colour, name});
    }
    const bool rounded = random.below(4) == 0;   // corners on a grid: many ties
    for (std::uint32_t left = 20 + random.below(300); left > 0; --left) {
        const double size = random.below(5) == 0 ? 1.5 : random.real(0.01, 0.2);
        const Point<3> middle = random.point(1.0);
        std::vector<Point<3>> corners;
        for (std::uint32_t i = 3 + random.below(random.below(8) == 0 ? 9 : 2); i > 0; --i) {
            Point<3> corner = middle + (random.point(size) - Point<3>());
            for (int axis = 0; rounded && axis < 3; ++axis)
                corner[axis] = static_cast<int>(corner[axis] * 4.0) * 0.25;
            corners.push_back(corner);
        }
        const Vector<3> normal = (corners[1] - corners[0]).cross(corners[2] - corners[0]);
        model->addPolygon(*materials[random.below(3)],
                          Plane(normal.length() > 0.0 ? normal : Vector<3>(0, 0, 1), corners[0]), corners);
    }
    return model;
}

ViewParameters randomView(Random& random, const ImageSize& size)
{
    ViewParameters view = wholeModel(freshView(), size);
    view.eye = random.point(random.below(3) == 0 ? 0.7 : 3.0);   // some from among the facets
    view.lookAt = random.point(0.5);
    view.zoom = random.real(0.2, 1.2);
    view.parallel = random.below(3) == 0;
    view.skyIntensity = random.real(0, 1);
    for (ParallelLightSetting& light : view.lights)
        light = {random.real(-180, 180), random.real(-90, 90), random.below(2) * random.real(0, 1)};
    return view;
}

void addTo(std::uint64_t& hash, const std::string& bytes)
{
    for (const char byte : bytes) hash = (hash ^ static_cast<unsigned char>(byte)) * 1099511628211u;
}

/// A hash of the image files of random scenes, drawn by threads as in `sharing`: facets small and large,
/// concave, through the eye's plane, cameras and lights from angles.
std::uint64_t hashOfScenes(const Sharing& sharing)
{
    const TempFile file("scene.omb");
    std::uint64_t hash = 14695981039346656037u;
    SilentReporter silent;
    Frame frame(sharing);
    for (int seed = 0; seed < 200; ++seed) {
        Random random(seed);
        const Handle<Model> model = randomModel(random);
        const int width = 30 + static_cast<int>(random.below(60)),
                  height = 20 + static_cast<int>(random.below(60));
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
