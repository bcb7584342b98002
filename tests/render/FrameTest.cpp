#include "render/Frame.h"

#include "tests/render/Keeper.h"
#include "tests/render/RandomScenes.h"
#include "tests/support/FailingAllocation.h"
#include "tests/support/Models.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <thread>
#include <vector>

using namespace belvor;

namespace {

using test::Image;

Handle<Model> jumble(int facets) { return test::RandomScenes(5).model(facets, 2); }

Scene sceneOf(const Model& model, int width, int height, double turned)
{
    ViewParameters view = wholeModel(freshView(), {width, height});
    view.eye = view.eye + Vector<3>(turned, -turned, turned * 0.5);
    view.parallel = turned > 1.0;
    return buildScene(view, test::placeOf(model), {width, height}, width, height);
}

/// With `frame` or, without one, with that of the model.
Image drawn(const Model& model, const Scene& scene, Frame* frame, Reporter& reporter)
{
    Image image;
    const auto sink = makeHandle<test::Keeper>(static_cast<int>(scene.camera->width), image);
    if (frame) frame->render(model, *scene.camera, *scene.lights, *sink, reporter);
    else model.render(*scene.camera, *scene.lights, *sink, reporter);
    return image;
}

Image drawn(const Model& model, const Scene& scene, Frame* frame)
{
    SilentReporter silent;
    return drawn(model, scene, frame, silent);
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
    class ThreadReporter : public test::RecordingReporter {
    public:
        bool progress(int stageCount, int stage, double fraction) override
        {
            EXPECT_EQ(std::this_thread::get_id(), asking);
            return RecordingReporter::progress(stageCount, stage, fraction);
        }
        const std::thread::id asking = std::this_thread::get_id();
    };
    const Handle<Model> model = jumble(3000);
    for (const double turned : {0.0, 0.7, 1.4}) {   // from without, from within, parallel
        const Scene scene = sceneOf(*model, 173, 131, turned);
        Image wanted;
        ThreadReporter wantedReports;
        for (const unsigned threads : {1u, 2u, 3u, 8u}) {
            Frame frame(Sharing{threads, 50});
            ThreadReporter reporter;
            const Image first = drawn(*model, scene, &frame);   // shaded in two passes
            const Image second = drawn(*model, scene, &frame, reporter);
            if (threads == 1) wanted = first, wantedReports.calls = callsOf(reporter);
            EXPECT_TRUE(first == wanted && second == wanted) << threads << " threads";
            EXPECT_EQ(callsOf(reporter), wantedReports.calls) << threads << " threads";
        }
    }
}

TEST(FrameThreads, ARenderStopsInEveryStageWhenAsked)
{
    const Handle<Model> model = jumble(3000);
    const Scene scene = sceneOf(*model, 173, 131, 0.7);
    const Image wanted = drawn(*model, scene, nullptr);
    Frame frame(Sharing{8, 50});
    drawn(*model, scene, &frame);   // a new frame shades twice
    test::RecordingReporter all;
    drawn(*model, scene, &frame, all);
    for (std::size_t call = 0; call < callsOf(all).size(); call += 7) {
        test::RecordingReporter impatient(call);
        EXPECT_THROW(drawn(*model, scene, &frame, impatient), Reporter::Abandoned);
        EXPECT_EQ(impatient.calls.size(), call + 1);
        EXPECT_FALSE(frame.complete());
    }
    EXPECT_TRUE(drawn(*model, scene, &frame) == wanted);
}

namespace {

/// Work that stands in few facets, rows or curves: each alone takes longer than a wish to stop may wait.
Handle<Model> zigzag(int corners)
{
    const Handle<Model> model = makeHandle<Model>();
    std::vector<Point<3>> outline;
    for (int i = 0; i < corners; ++i)
        outline.push_back({1.0 * static_cast<int>(i * 7919LL % corners), 1.0 * (i % 1000), 0.0});
    model->addPolygon(model->addMaterial("a", {1, {1, 1, 1}, "a"}), Plane(Vector<3>(0, 0, 1), 0.0), outline);
    return model;
}

Handle<Model> tallFacets(int count)
{
    const Handle<Model> model = makeHandle<Model>();
    const Material& material = model->addMaterial("a", {1, {1, 1, 1}, "a"});
    for (int i = 0; i < count; ++i) {
        const double depth = 1e-4 * i;
        const Point<3> corners[] = {{-9.0, depth, -100.0},
                                    {9.0, depth, -100.0},
                                    {9.0, depth, 90.0},
                                    {0.0, depth, 100.0},
                                    {-9.0, depth, 90.0}};
        model->addPolygon(material, Plane(corners[0], corners[1], corners[2]), corners);
    }
    return model;
}

Handle<Model> longCurve(int points)
{
    const Handle<Model> model = makeHandle<Model>();
    std::vector<Point<3>> path;
    for (int i = 0; i < points; ++i) path.push_back({1.0 * i, 100.0 * (i % 2), 0.0});
    model->addCurve(model->addMaterial("a", {1, {1, 1, 1}, "a"}), path);
    return model;
}

}   // namespace

// The work between two questions is at most a pause's interval and what one item adds, so that the questions
// can be counted from the work, without a clock.
TEST(FramePauses, AreAsOftenAsTheWorkAsksFor)
{
    struct Case {
        const char* what;
        Handle<Model> model;
        int width, height;
        std::size_t before,
            rows;   // questions in the first stage and while rows are drawn, besides the reports
    };
    constexpr int corners = 400000, tall = 5000;
    constexpr std::size_t each = Pauses::interval;
    const Case cases[] = {
        {"corners of one facet", zigzag(corners), 40, 30, corners / each, 2 * corners / each},
        {"facets on every row", tallFacets(tall), 400, 300, 0, 100 * std::size_t{12} * tall / each},
        {"points of one curve", longCurve(corners), 40, 30, 0, 2 * corners / each},
    };
    LineStyle style;
    style.curves = true;
    for (const Case& one : cases) {
        SCOPED_TRACE(one.what);
        const Scene scene = sceneOf(*one.model, one.width, one.height, 0.0);
        Image ignored;
        Sharing sharing{1};
        sharing.patience = std::chrono::milliseconds(0);
        Frame frame(sharing);
        test::RecordingReporter all;
        const auto render = [&](test::RecordingReporter& reporter) {
            ignored = {};
            frame.render(*one.model, *scene.camera, *scene.lights,
                         *makeHandle<test::Keeper>(one.width, ignored), reporter, style);
        };
        render(all);
        std::size_t asked[2] = {0, 0};
        for (std::size_t i = 1; i < all.calls.size(); ++i)
            asked[std::get<1>(all.calls[i])] += all.calls[i] == all.calls[i - 1];
        EXPECT_GE(asked[0], one.before);
        EXPECT_GE(asked[1], one.rows);
        test::RecordingReporter impatient(all.calls.size() / 2);
        EXPECT_THROW(render(impatient), Reporter::Abandoned);
        EXPECT_EQ(impatient.calls.size(), all.calls.size() / 2 + 1);
    }
}

TEST(Frame, IsUsableAfterAnyAllocationFailed)
{
    const Scene scene = sceneOf(*jumble(60), 30, 20, 0.3);
    const Image wanted = drawn(*jumble(60), scene, nullptr);
    SilentReporter silent;
    struct Sink : Buffer {
        using Buffer::Buffer;
        void lineDone(int) override { ++rows; }
        int rows = 0;
    };
    std::size_t failures = 0;
    // A frame that a failure left half filled, and the one that the model keeps.
    for (bool failed = true; failed; ++failures) {
        Frame frame;
        const Handle<Model> model = jumble(60);
        for (const bool plainCall : {false, true}) {
            const Handle<Sink> sink = makeHandle<Sink>(30);
            const test::FailingAllocation failing(failures);
            bool thrown = false;
            try {
                if (plainCall) model->render(*scene.camera, *scene.lights, *sink, silent);
                else frame.render(*model, *scene.camera, *scene.lights, *sink, silent);
            } catch (const std::bad_alloc&) {
                thrown = true;
            }
            failed = failing.failed();
            EXPECT_TRUE(thrown ? failed : sink->rows == 20) << failures;   // a sort works without its buffer
        }
        EXPECT_EQ(drawn(*model, scene, &frame), wanted) << failures;
        EXPECT_EQ(drawn(*model, scene, nullptr), wanted) << failures;
    }
    EXPECT_GT(failures, 10u);
}

TEST(Frame, ACornerThatIsNotFiniteDoesNotStopTheRender)
{
    for (const double corner : {std::nan(""), HUGE_VAL, 1e308, -1e308}) {
        Model model;
        const Point<3> corners[] = {{0, 0, 0}, {1, 0, 0}, {corner, 1, 0}};
        model.addPolygon(model.findMaterial("a"), Plane(Vector<3>(0, 0, 1), 0.0), corners);
        const Image image = drawn(model, sceneOf(model, 24, 18, 0.0), nullptr);
        EXPECT_EQ(image.size(), 18u);
        EXPECT_TRUE(!std::isnan(corner) || image == Image(18, std::vector<test::Pixel>(24)));
    }
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
        drawn(*model, scene, &frame, reporter);
        EXPECT_EQ(callsOf(reporter).size() + fewer, wanted.size());
        EXPECT_TRUE(fewer != 0 || reporter.calls == wanted);
    }
}
