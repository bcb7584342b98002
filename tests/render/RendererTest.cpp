#include "render/Frame.h"
#include "tests/render/Keeper.h"
#include "tests/support/Models.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <string>

using namespace belvor;

namespace {

using test::boxText;
using test::placeOf;
using test::RecordingReporter;
using test::thingsModel;

Scene whole(const Model& model, bool parallel = false)
{
    ViewParameters view = wholeModel(freshView(), {24, 18});
    view.parallel = parallel;
    return buildScene(view, placeOf(model), {24, 18}, 24, 18);
}

/// A camera inside the scene: a field of 2 × 1.5, 24 × 18 pixels, sky and ground light only.
Scene inside(const Point<3>& eye, double azimuth, const Model& model)
{
    const ModelPlace place = placeOf(model);
    const Handle<LightSet> lights = makeHandle<LightSet>();
    lights->set(1, makeHandle<AmbientLight>(Colour{0.4, 0.4, 0.4}, Colour{0.1, 0.1, 0.1}));
    return {makeHandle<PerspectiveCamera>(
                CameraView{24, 18, eye, azimuth, 0, 2, 1.5, place.centre, place.radius}),
            lights};
}

test::Image render(const Scene& scene, const Model& model)
{
    Frame frame;
    return test::drawn(frame, model, *scene.camera, *scene.lights);
}

}   // namespace

// What rows are made of is PixelwiseTest's; here stand pictures worked out by hand.

TEST(Renderer, DrawsAndLightsTheBox)
{
    using Counts = std::map<std::uint32_t, int>;   // of each facet's pixels
    constexpr std::uint32_t roof = 1, front = 2, left = 5, none = Buffer::noFacet;
    const std::tuple<bool, Counts, double> cases[] = {
        {false, {{roof, 20}, {front, 45}, {left, 81}, {none, 286}}, -2.59131695768266},
        {true, {{roof, 21}, {front, 50}, {left, 88}, {none, 273}}, -12.877945846808},
    };
    const int colours[6][3] = {{146, 255, 237}, {255, 218, 165}, {110, 102, 141},
                               {88, 111, 78},   {141, 90, 122},  {62, 104, 111}};
    const Handle<Model> model = thingsModel(boxText);
    for (const auto& [parallel, wantedCounts, depth] : cases) {
        const Scene scene = whole(*model, parallel);
        Frame frame;
        const test::Image image = test::drawn(frame, *model, *scene.camera, *scene.lights);
        Counts counts;
        for (const auto& row : image)
            for (const test::Pixel& pixel : row) ++counts[pixel.owner];
        EXPECT_EQ(counts, wantedCounts) << parallel;
        EXPECT_EQ(image[9][12].owner, left) << parallel;
        EXPECT_NEAR(image[9][12].depth, depth, 1e-11) << parallel;
        for (std::uint32_t i = 1; i < 6; ++i)   // the base is seen edge on
            for (int channel = 0; channel < 3; ++channel)
                EXPECT_EQ(frame.colour(i)[channel], colours[i][channel]) << i;
    }
}

TEST(Renderer, DrawsFacetsThatTheEyePlaneCuts)
{
    // Columns: why, corners, eyeHeight, azimuth, row, first, end, firstDepth, lastDepth.
    const std::tuple<const char*, const char*, double, double, int, int, int, double, double> cases[] = {
        {"a wall on the right", "1 -10 -1  1 10 -1  1 10 1  1 -10 1", 0, 180, 9, 14, 24, -2, -11},
        {"at the top", "1 -10 -1  1 10 -1  1 10 1  1 -10 1", 0, 180, 0, 22, 24, -10, -11},
        {"a wall on the left", "-1 -10 -1  -1 10 -1  -1 10 1  -1 -10 1", 0, 180, 9, 0, 11, -12, -2},
        {"at the bottom", "-1 -10 -1  -1 10 -1  -1 10 1  -1 -10 1", 0, 180, 17, 0, 4, -12, -9},
        {"ground: an edge that lies level across the eye plane", "-10 -10 0  10 -10 0  10 10 0  -10 10 0", 1,
         180, 10, 0, 0, 0, 0},
        {"below the horizon", "-10 -10 0  10 -10 0  10 10 0  -10 10 0", 1, 180, 11, 0, 24, -2, -2},
        {"its far corner, turned", "-10 -10 0  10 -10 0  10 10 0  -10 10 0", 1, 200, 10, 6, 9, -1, -1},
    };
    for (const auto& [why, corners, eyeHeight, azimuth, rowNumber, first, end, firstDepth, lastDepth] :
         cases) {
        const Handle<Model> model = thingsModel("Y 4 " + std::string(corners) + " 0 1 1 Wall\n4 1 2 3 4\n");
        const auto row =
            render(inside({0, 0, eyeHeight}, azimuth, *model), *model)[static_cast<std::size_t>(rowNumber)];
        for (int i = 0; i < 24; ++i)
            EXPECT_EQ(row[static_cast<std::size_t>(i)].owner != Buffer::noFacet, i >= first && i < end)
                << why << ", column " << i;
        if (first == end) continue;
        EXPECT_NEAR(row[static_cast<std::size_t>(first)].depth, firstDepth, 1e-12) << why;
        EXPECT_NEAR(row[static_cast<std::size_t>(end) - 1].depth, lastDepth, 1e-12) << why;
    }
}

TEST(Renderer, ACornerThatIsNotFiniteDoesNotStopTheRender)
{
    for (const double corner : {std::nan(""), HUGE_VAL, 1e308, -1e308}) {
        Model model;
        const Point<3> corners[] = {{0, 0, 0}, {1, 0, 0}, {corner, 1, 0}};
        model.addPolygon(model.findMaterial("a"), Plane(Vector<3>(0, 0, 1), 0.0), corners);
        const test::Image image = render(inside({0.2, -3, 0.5}, 180, model), model);
        EXPECT_EQ(image.size(), 18u);
        EXPECT_TRUE(!std::isnan(corner) || image == test::Image(18, std::vector<test::Pixel>(24)));
    }
}

TEST(Renderer, ReportsItsStages)
{
    std::string text = "Y 600";
    for (int i = 0; i < 600; ++i) text += " " + std::to_string(i % 25) + " " + std::to_string(i / 25) + " 0";
    text += " 0 130";
    for (int i = 0; i < 130; ++i)
        text += i < 34 || i % 2 == 0 ? " 1 A\n9 1 2 3 4 5 6 7 8 9" : " 1 A\n8 1 2 3 4 5 6 7 8";
    const Handle<Model> model = thingsModel(text);
    const Scene view = whole(*model);
    const double edges = model->edgeCount();
    std::vector<std::tuple<int, int, double>> wanted;
    for (const double i : {0.0, 256.0, 512.0}) wanted.emplace_back(2, 0, i / 1800);
    for (double i = 0; i < edges; i += 256) wanted.emplace_back(2, 0, i / (3 * edges) + 1.0 / 3.0);
    // The first pass finds the scene darker than the stored brightness: no sign of a second pass before it
    // comes.
    for (const double i : {0.0, 64.0, 128.0}) wanted.emplace_back(2, 0, 2.0 / 3.0 + i / 390);
    for (const double i : {0.0, 64.0, 128.0}) wanted.emplace_back(2, 0, 5.0 / 6.0 + i / 780);
    for (double y = 0; y < 18; ++y) wanted.emplace_back(2, 1, y / 18);
    // A row that takes long is reported again meanwhile, which depends on the machine.
    const auto callsWithoutRepeats = [](RecordingReporter& reporter) {
        auto& calls = reporter.calls;
        calls.erase(std::unique(calls.begin(), calls.end()), calls.end());
        return calls;
    };
    Frame frame;
    for (const std::size_t lessCalls : {0u, 3u}) {   // an unchanged scene is shaded in one pass
        test::Image ignored;
        RecordingReporter reporter;
        frame.render(*model, *view.camera, *view.lights, *makeHandle<test::Keeper>(24, ignored), reporter);
        const auto calls = callsWithoutRepeats(reporter);
        EXPECT_EQ(calls.size() + lessCalls, wanted.size());
        EXPECT_TRUE(lessCalls != 0 || calls == wanted);
    }
}
