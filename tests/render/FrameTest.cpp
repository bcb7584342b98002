#include "render/Frame.h"

#include "tests/render/Keeper.h"
#include "tests/support/FailingAllocation.h"
#include "tests/support/Models.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <thread>
#include <vector>

using namespace belvor;

namespace {

using test::Image;

/// Triangles, small ones and large ones, and one polygon of many edges.
Handle<Model> jumble(int triangles)
{
    const Handle<Model> model = makeHandle<Model>();
    const Material& material = model->addMaterial("a", {1, {0.5, 0.7, 0.9}, "a"});
    std::mt19937 random(5);
    std::uniform_real_distribution<double> anywhere(-1.0, 1.0);
    for (int i = 0; i < triangles; ++i) {
        const double size = i % 10 == 0 ? 1.0 : 0.05;
        const Point<3> middle(anywhere(random), anywhere(random), anywhere(random));
        Point<3> corners[3];
        for (Point<3>& corner : corners)
            corner = middle + Vector<3>(anywhere(random), anywhere(random), anywhere(random)) * size;
        model->addPolygon(material, Plane(corners[0], corners[1], corners[2]), corners);
    }
    std::vector<Point<3>> star;
    for (int i = 0; i < 12; ++i) star.push_back({(i % 2 + 1) * 0.5 * (i % 4 - 1.5), (i % 3 - 1) * 0.9, 0.1});
    model->addPolygon(material, Plane(Vector<3>(0, 0, 1), star[0]), star);
    return model;
}

Scene sceneOf(const Model& model, int width, int height, double turned)
{
    ViewParameters view = wholeModel(freshView(), {width, height});
    view.eye = view.eye + Vector<3>(turned, -turned, turned * 0.5);
    view.parallel = turned > 1.0;
    return buildScene(view, test::placeOf(model), {width, height}, width, height);
}

Image drawn(const Model& model, const Scene& scene, Frame* frame)
{
    if (frame) return test::drawn(*frame, model, *scene.camera, *scene.lights);
    Image image;
    SilentReporter silent;
    model.render(*scene.camera, *scene.lights,
                 *makeHandle<test::Keeper>(static_cast<int>(scene.camera->width), image), silent);
    return image;
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
    const std::thread::id asking = std::this_thread::get_id();
    class ThreadReporter : public test::RecordingReporter {
    public:
        using RecordingReporter::RecordingReporter;
        bool progress(int stageCount, int stage, double fraction) override
        {
            EXPECT_EQ(std::this_thread::get_id(), asking);
            return RecordingReporter::progress(stageCount, stage, fraction);
        }
        std::thread::id asking;
    };
    for (const double turned : {0.0, 0.7, 1.4}) {   // from without, from within, parallel
        const Scene scene = sceneOf(*model, 173, 131, turned);
        Image wanted;
        ThreadReporter wantedReports;
        for (const unsigned threads : {1u, 2u, 3u, 8u}) {
            Frame frame(Sharing{threads, 50});
            for (int repeat = 0; repeat < 2; ++repeat) {
                ThreadReporter reporter;
                reporter.asking = asking;
                Image picture;
                frame.render(*model, *scene.camera, *scene.lights, *makeHandle<test::Keeper>(173, picture),
                             reporter);
                // A fraction may be reported again while rows take long.
                reporter.calls.erase(std::unique(reporter.calls.begin(), reporter.calls.end()),
                                     reporter.calls.end());
                if (threads == 1 && repeat == 0) wanted = picture;
                if (threads == 1) wantedReports.calls = reporter.calls;
                EXPECT_TRUE(picture == wanted) << threads << " threads";
                if (repeat == 1) {   // shaded in one pass
                    EXPECT_EQ(reporter.calls, wantedReports.calls) << threads << " threads";
                }
            }
        }
    }
}

TEST(FrameThreads, ARenderStopsInEveryStageWhenAsked)
{
    const Handle<Model> model = jumble(3000);
    const Scene scene = sceneOf(*model, 173, 131, 0.7);
    Image wanted = drawn(*model, scene, nullptr), ignored;
    Frame frame(Sharing{8, 50});
    drawn(*model, scene, &frame);   // a new frame shades twice
    test::RecordingReporter all;
    frame.render(*model, *scene.camera, *scene.lights, *makeHandle<test::Keeper>(173, ignored), all);
    all.calls.erase(std::unique(all.calls.begin(), all.calls.end()), all.calls.end());
    for (std::size_t call = 0; call < all.calls.size(); call += 7) {
        test::RecordingReporter impatient(call);
        EXPECT_THROW(frame.render(*model, *scene.camera, *scene.lights,
                                  *makeHandle<test::Keeper>(173, ignored = {}), impatient),
                     Reporter::Abandoned);
        EXPECT_EQ(impatient.calls.size(), call + 1);
        EXPECT_FALSE(frame.complete());
    }
    EXPECT_TRUE(drawn(*model, scene, &frame) == wanted);
}

TEST(Frame, IsUsableAfterAnyAllocationFailed)
{
    const Scene scene = sceneOf(*jumble(60), 30, 20, 0.3);
    const Image wanted = drawn(*jumble(60), scene, nullptr);
    SilentReporter silent;
    class Sink : public Buffer {
    public:
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
