#include "render/Frame.h"

#include "render/Buffer.h"
#include "render/Outlines.h"
#include "tests/render/RandomScenes.h"
#include "tests/support/FailingAllocation.h"
#include "tests/support/Models.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <limits>
#include <thread>
#include <vector>

using namespace belvor;

namespace {

/// All that a sink is given of a pixel.
struct Pixel {
    std::uint32_t owner = Buffer::noFacet;   // a facet; none for a line
    bool line = false;
    double depth = std::numeric_limits<double>::max();
    std::array<std::uint8_t, 3> colour{};
    std::uint16_t material = 0;
    friend bool operator==(const Pixel&, const Pixel&) = default;
};
using Image = std::vector<std::vector<Pixel>>;

/// Keeps what the renderer delivers.
class Keeper : public Buffer {
public:
    Keeper(int width, Image& target) : Buffer(width), image(target) {}
    void lineDone(int row) override
    {
        EXPECT_EQ(static_cast<std::size_t>(row), image.size()) << "rows come in order";
        auto& pixels = image.emplace_back(width());
        for (int i = 0; i < width(); ++i) {
            if (owner(i) == noFacet) continue;
            const bool line = hasLines() && isLine(owner(i));
            pixels[static_cast<std::size_t>(i)] = {line ? noFacet : owner(i), line, depth(i),
                                                   colour(owner(i)), material(owner(i))};
        }
    }

private:
    Image& image;
};

Handle<Model> jumble(int facets) { return test::RandomScenes(5).model(facets, 2); }

Scene sceneOf(const Model& model, int width, int height, double turned)
{
    ViewParameters view = wholeModel(freshView(), {width, height});
    view.eye = view.eye + Vector<3>(turned, -turned, turned * 0.5);
    view.parallel = turned > 1.0;
    return buildScene(view, test::placeOf(model), {width, height}, width, height);
}

/// With `frame` or, without one, with that of the model.
Image drawn(const Model& model, const Scene& scene, Frame* frame, Reporter* reporter = nullptr,
            const LineStyle& style = {})
{
    Image image;
    SilentReporter silent;
    Reporter& asked = reporter ? *reporter : silent;
    const auto sink = makeHandle<Keeper>(static_cast<int>(scene.camera->width), image);
    if (frame) frame->render(model, *scene.camera, *scene.lights, *sink, asked, style);
    else model.render(*scene.camera, *scene.lights, *sink, asked);
    return image;
}

/// What was reported. A fraction that was reported again, as while rows take long, comes once.
auto callsOf(test::RecordingReporter& reporter)
{
    auto& calls = reporter.calls;
    calls.erase(std::unique(calls.begin(), calls.end()), calls.end());
    return calls;
}

}   // namespace

TEST(Frame, SimultaneousRendersOfOneModelEqualSingleRenders)
{
    const Handle<Model> model = jumble(400);
    constexpr int threadCount = 4;
    std::vector<Scene> scenes;
    std::vector<Image> wanted;
    for (int i = 0; i < threadCount; ++i) {
        scenes.push_back(sceneOf(*model, 40 + 7 * i, 30 + 3 * i, 0.6 * i));
        wanted.push_back(drawn(*model, scenes.back(), nullptr));
    }
    std::vector<int> wrong(threadCount, 0);
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < threadCount; ++i)
        threads.emplace_back([&, i] {
            Frame own;
            for (int repeat = 0; repeat < 5; ++repeat) {
                // Half of the threads use the plain call, which shares what the model keeps.
                const std::size_t which = (i + static_cast<std::size_t>(repeat)) % threadCount;
                wrong[i] += drawn(*model, scenes[which], i % 2 == 0 ? &own : nullptr) != wanted[which];
            }
        });
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(wrong, std::vector<int>(threadCount, 0));
}

TEST(FrameThreads, AnyNumberOfThreadsGivesTheSamePictureAndReports)
{
    const Handle<Model> model = jumble(3000);
    for (const double turned : {0.0, 0.7, 1.4}) {   // from without, from within, parallel
        const Scene scene = sceneOf(*model, 173, 131, turned);
        Image wanted;
        test::RecordingReporter wantedReports;
        for (const unsigned threads : {1u, 2u, 3u, 8u}) {
            Frame frame(Sharing{threads, 50});
            test::RecordingReporter reporter;
            const Image first = drawn(*model, scene, &frame);   // shaded in two passes
            const Image second = drawn(*model, scene, &frame, &reporter);
            if (threads == 1) wanted = first, wantedReports.calls = callsOf(reporter);
            EXPECT_TRUE(first == wanted && second == wanted) << threads << " threads";
            EXPECT_EQ(callsOf(reporter), wantedReports.calls) << threads << " threads";
        }
    }
}

// Which pixels surfaces and lines take is worked out in tests/picture. Facets are filled as on this
// processor, as on lesser ones, and as on any.
TEST(FrameThreads, RandomScenesAreTheSameForAnyNumberOfThreadsAndOnAnyProcessor)
{
    std::size_t shown = 0, others = 0;
    const FacetFills fills = runnableFacetFills();
    Frame one(Sharing{1, 1000}),
        more[] = {Frame(Sharing{2, 1, fillFacets}), Frame(Sharing{3, 1, fills.all[fills.count / 2]}),
                  Frame(Sharing{8, 1})};
    const auto lights = makeHandle<LightSet>();
    lights->set(1, makeHandle<AmbientLight>(Colour{0.6, 0.7, 0.8}, Colour{0.1, 0.1, 0.1}));
    for (int seed = 0; seed < 600 && !HasFailure(); ++seed) {
        test::RandomScenes scenes(static_cast<std::uint64_t>(seed));
        const Handle<Model> model = scenes.model();
        const Handle<Camera> camera = scenes.camera(*model);
        const Outlines outlines(*model);
        LineStyle style;
        style.curves = scenes.whole(0, 3) != 0;
        if (!style.curves || scenes.whole(0, 3) != 0) style.outlines = &outlines;
        style.everyEdge = scenes.whole(0, 2) == 0;
        style.width = scenes.whole(0, 1) == 0 ? 1 : 1 + 2 * scenes.whole(0, 7);
        style.surfaces = scenes.whole(0, 3) != 0;
        const Scene scene{camera, lights};
        const Image wanted = drawn(*model, scene, &one, nullptr, style);
        EXPECT_TRUE(drawn(*model, scene, &more[seed % 3], nullptr, style) == wanted) << "seed " << seed;
        for (const auto& row : wanted)
            for (const Pixel& pixel : row) ++(pixel.line ? shown : others);
    }
    EXPECT_GT(shown, others / 20);
    EXPECT_GT(others, shown / 20);
}

TEST(FrameThreads, ARenderStopsInEveryStageWhenAsked)
{
    const Handle<Model> model = jumble(3000);
    const Scene scene = sceneOf(*model, 173, 131, 0.7);
    const Image wanted = drawn(*model, scene, nullptr);
    Frame frame(Sharing{8, 50});
    drawn(*model, scene, &frame);   // a new frame shades twice
    test::RecordingReporter all;
    drawn(*model, scene, &frame, &all);
    for (std::size_t call = 0; call < callsOf(all).size(); call += 7) {
        test::RecordingReporter impatient(call);
        EXPECT_THROW(drawn(*model, scene, &frame, &impatient), Reporter::Abandoned);
        EXPECT_EQ(impatient.calls.size(), call + 1);
        EXPECT_FALSE(frame.complete());
    }
    EXPECT_TRUE(drawn(*model, scene, &frame) == wanted);
}

namespace {

/// Work that stands in few facets, rows or curves: each alone takes longer than a wish to stop may wait.
Handle<Model> zigzag(int corners, bool isCurve)
{
    const Handle<Model> model = makeHandle<Model>();
    const Material& material = model->findMaterial("a");
    std::vector<Point<3>> path;
    for (int i = 0; i < corners; ++i)
        path.push_back({1.0 * static_cast<int>(i * 7919LL % corners), 1.0 * (i % 1000), 0.0});
    if (isCurve) model->addCurve(material, path);
    else model->addPolygon(material, Plane(Vector<3>(0, 0, 1), 0.0), path);
    return model;
}

Handle<Model> tallFacets(int count)
{
    const Handle<Model> model = makeHandle<Model>();
    const Material& material = model->findMaterial("a");
    for (int i = 0; i < count; ++i) {
        const double y = 1e-4 * i;
        const Point<3> corners[] = {{-9, y, -100}, {9, y, -100}, {9, y, 90}, {0, y, 100}, {-9, y, 90}};
        model->addPolygon(material, Plane(corners[0], corners[1], corners[2]), corners);
    }
    return model;
}

}   // namespace

// The work between two questions is at most a pause's interval and what one item adds, so that the questions
// can be counted from the work, without a clock.
TEST(FramePauses, AreAsOftenAsTheWorkAsksFor)
{
    constexpr int corners = 400000, tall = 5000;
    constexpr std::size_t each = Pauses::interval;
    // Columns: why, model, width, height, questions in the first stage and while rows are drawn, besides the
    // reports.
    const std::tuple<const char*, Handle<Model>, int, int, std::size_t, std::size_t> cases[] = {
        {"corners of one facet", zigzag(corners, false), 40, 30, corners / each, 2 * corners / each},
        {"facets on every row", tallFacets(tall), 400, 300, 0, 100 * std::size_t{12} * tall / each},
        {"points of one curve", zigzag(corners, true), 40, 30, 0, 2 * corners / each},
    };
    LineStyle style;
    style.curves = true;
    for (const auto& [why, model, width, height, before, rows] : cases) {
        SCOPED_TRACE(why);
        const Scene scene = sceneOf(*model, width, height, 0.0);
        Sharing sharing{1};
        sharing.patience = std::chrono::milliseconds(0);
        Frame frame(sharing);
        const auto render = [&, &shape = *model](test::RecordingReporter& reporter) {
            drawn(shape, scene, &frame, &reporter, style);
        };
        test::RecordingReporter all;
        render(all);
        std::size_t asked[2] = {0, 0};
        for (std::size_t i = 1; i < all.calls.size(); ++i)
            asked[std::get<1>(all.calls[i])] += all.calls[i] == all.calls[i - 1];
        EXPECT_GE(asked[0], before);
        EXPECT_GE(asked[1], rows);
        test::RecordingReporter impatient(all.calls.size() / 2);
        EXPECT_THROW(render(impatient), Reporter::Abandoned);
        EXPECT_EQ(impatient.calls.size(), all.calls.size() / 2 + 1);
    }
}

TEST(Frame, IsUsableAfterAnyAllocationFailed)
{
    const Scene scene = sceneOf(*jumble(60), 30, 20, 0.3);
    const Image wanted = drawn(*jumble(60), scene, nullptr);
    std::size_t failures = 0;
    // A frame that a failure left half filled, and the one that the model keeps.
    for (bool failed = true; failed; ++failures) {
        Frame frame;
        const Handle<Model> model = jumble(60);
        for (const bool plainCall : {false, true}) {
            const test::FailingAllocation failing(failures);
            bool good = true;   // a sort works without its buffer
            try {
                good = drawn(*model, scene, plainCall ? nullptr : &frame) == wanted;
            } catch (const std::bad_alloc&) {
                good = failing.failed();
            }
            failed = failing.failed();
            EXPECT_TRUE(good) << failures;
        }
        EXPECT_EQ(drawn(*model, scene, &frame), wanted) << failures;
        EXPECT_EQ(drawn(*model, scene, nullptr), wanted) << failures;
    }
    EXPECT_GT(failures, 10u);
}

TEST(Frame, ReportsItsStages)
{
    const Handle<Model> model = jumble(130);
    const double vertices = model->vertexCount(), edges = model->edgeCount();
    std::vector<std::tuple<int, int, double>> wanted;
    for (double i = 0; i < vertices; i += 256) wanted.emplace_back(2, 0, i / (3 * vertices));
    for (double i = 0; i < edges; i += 256) wanted.emplace_back(2, 0, i / (3 * edges) + 1.0 / 3.0);
    // The first pass finds the scene darker than the stored brightness: no sign of a second pass before it
    // comes.
    for (const double i : {0.0, 64.0, 128.0}) wanted.emplace_back(2, 0, 2.0 / 3.0 + i / 390);
    for (const double i : {0.0, 64.0, 128.0}) wanted.emplace_back(2, 0, 5.0 / 6.0 + i / 780);
    for (double y = 0; y < 18; ++y) wanted.emplace_back(2, 1, y / 18);
    Frame frame;
    const Scene scene = sceneOf(*model, 24, 18, 0.0);
    for (const std::size_t fewer : {0u, 3u}) {   // an unchanged scene is shaded in one pass
        test::RecordingReporter reporter;
        drawn(*model, scene, &frame, &reporter);
        EXPECT_EQ(callsOf(reporter).size() + fewer, wanted.size());
        EXPECT_TRUE(fewer != 0 || reporter.calls == wanted);
    }
}
