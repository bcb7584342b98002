#include "render/Outlines.h"
#include "tests/render/Keeper.h"
#include "tests/render/RandomScenes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

using namespace belvor;
using namespace belvor::test;

namespace {

/// Adds what plain random facets lack: bodies whose facets meet, wound at random, and curves.
void addBodiesAndCurves(Model& model, RandomScenes& scenes)
{
    const bool lattice = scenes.whole(0, 1) == 0;
    const auto coordinate = [&] { return lattice ? 0.5 * scenes.whole(-6, 6) : scenes.real(-3, 3); };
    std::vector<const Material*> materials;
    for (const auto& [key, material] : model.materials()) materials.push_back(&material);
    const auto anyMaterial = [&] {
        return materials[static_cast<std::size_t>(scenes.whole(0, static_cast<int>(materials.size()) - 1))];
    };
    for (int body = scenes.whole(0, 3); body > 0; --body) {
        const Point<3> low(coordinate(), coordinate(), coordinate());
        const double size[] = {scenes.real(0.1, 2), scenes.whole(1, 3) * 0.5, scenes.real(0.1, 2)};
        for (int side = 0; side < 6; ++side) {
            if (scenes.whole(0, 9) == 0) continue;   // an open body
            Vector<3> across, up, outwards;
            across[side % 3] = size[side % 3];
            up[(side + 1) % 3] = size[(side + 1) % 3];
            outwards[(side + 2) % 3] = side < 3 ? -0.0 : size[(side + 2) % 3];
            const Point<3> start = low + outwards;
            std::vector<Point<3>> corners{start, start + across, start + across + up, start + up};
            if (scenes.whole(0, 1) == 0) std::reverse(corners.begin(), corners.end());
            model.addPolygon(*anyMaterial(), Plane(corners[0], corners[1], corners[2]), corners);
        }
    }
    for (int curve = scenes.whole(0, 6); curve > 0; --curve) {
        std::vector<Point<3>> points;
        const double reach = scenes.whole(0, 9) == 0 ? 1e6 : scenes.whole(0, 4) == 0 ? 0.01 : 1.0;
        const Point<3> start(coordinate(), coordinate(), coordinate());
        for (int i = scenes.whole(1, 6); i > 0; --i)
            points.push_back(start + Vector<3>(coordinate(), coordinate(), coordinate()) * reach);
        model.addCurve(*anyMaterial(), points);
    }
}

}   // namespace

// Which pixels lines take, and where surfaces hide them, is worked out in tests/picture.
TEST(FrameThreads, LinesAreTheSameForAnyNumberOfThreads)
{
    std::size_t shown = 0, others = 0;
    Frame one(Sharing{1, 1000}), more[] = {Frame(Sharing{2, 1}), Frame(Sharing{3, 1}), Frame(Sharing{8, 1})};
    for (int seed = 0; seed < 600 && !testing::Test::HasFailure(); ++seed) {
        RandomScenes scenes(static_cast<std::uint64_t>(seed));
        const Handle<Model> model = scenes.model();
        addBodiesAndCurves(*model, scenes);
        const Handle<Camera> camera = scenes.camera(*model);
        LightSet lights;
        lights.set(1, makeHandle<AmbientLight>(Colour{0.6, 0.7, 0.8}, Colour{0.1, 0.1, 0.1}));
        const Outlines outlines(*model);
        LineStyle style;
        style.curves = scenes.whole(0, 3) != 0;
        if (!style.curves || scenes.whole(0, 3) != 0) style.outlines = &outlines;
        style.everyEdge = scenes.whole(0, 2) == 0;
        style.width = scenes.whole(0, 1) == 0 ? 1 : 1 + 2 * scenes.whole(0, 7);
        style.surfaces = scenes.whole(0, 3) != 0;
        const Image wanted = drawn(one, *model, *camera, lights, style);
        expectSame(drawn(more[seed % 3], *model, *camera, lights, style), wanted, seed);
        for (const auto& row : wanted)
            for (const Pixel& pixel : row) ++(pixel.line ? shown : others);
    }
    EXPECT_GT(shown, others / 20);
    EXPECT_GT(others, shown / 20);
}
