#include "app/shell/ImageRequest.h"
#include "app/shell/LoadRequest.h"
#include "render/queue/RenderThread.h"
#include "tests/render/queue/FakeHost.h"
#include "tests/support/Files.h"
#include "tests/support/Models.h"

#include <gtest/gtest.h>

namespace belvor {
namespace {

using test::boxText;
using test::TempFile;

/// Goes on with a loaded model as the main window does: keeps it and draws it into a file.
class DrawingHost : public FakeHost {
public:
    DrawingHost(Handle<RenderQueue> requests, std::string file) : queue(std::move(requests)), picture(std::move(file)) {}
    void modelLoaded(const std::string& path, Model* loaded) override
    {
        FakeHost::modelLoaded(path, loaded);
        model = Handle<Model>(loaded);
        if (model) draw();
        queue->post(7, makeHandle<ExitRequest>());
        queue = {};
    }
    Handle<Model> model;

private:
    void draw()
    {
        const ImageSize size{40, 30};
        const Scene scene = buildScene(wholeModel(freshView(), size), test::placeOf(*model), size, size.width, size.height);
        const auto sink = makeHandle<OmbrBuff>(picture, model, scene.camera, size.width, size.height);
        queue->post(imageFile, makeHandle<ImageRequest>("picture", model, scene.camera, scene.lights, sink));
    }
    Handle<RenderQueue> queue;
    std::string picture;
};

std::string pictureOf(const Handle<Model>& model)
{
    const TempFile file("direct.omb");
    const ImageSize size{40, 30};
    const Scene scene = buildScene(wholeModel(freshView(), size), test::placeOf(*model), size, size.width, size.height);
    OmbrBuff sink(file.path(), model, scene.camera, size.width, size.height);
    SilentReporter silent;
    model->render(*scene.camera, *scene.lights, sink, silent);
    sink.finish();
    return file.bytes();
}

}   // namespace

TEST(RenderThreadRoad, LeadsFromAModelFileToTheSamePictureAsADirectRender)
{
    const TempFile model("box.thf", boxText), picture("box.omb");
    const auto queue = makeHandle<RenderQueue>();
    const auto host = makeHandle<DrawingHost>(queue, picture.path());
    queue->post(7, makeHandle<LoadRequest>(model.path(), FileType::things, host));
    startRenderThread(queue, host);
    host->waitForEnd();
    ASSERT_TRUE(host->model);
    EXPECT_EQ(host->model->facetCount(), 6u);
    EXPECT_EQ(picture.bytes(), pictureOf(host->model));
}

TEST(RenderThreadRoad, ReportsAFaultyFileAndHandsOverNoModel)
{
    const TempFile model("bad.thf", "Y 3\n0 0 0\n1 0 0\n0 1 0\n0\n1\n1 Red\n3 1 2 9\n");
    const auto queue = makeHandle<RenderQueue>();
    const auto host = makeHandle<FakeHost>();
    queue->post(7, makeHandle<LoadRequest>(model.path(), FileType::things, host));
    queue->post(7, makeHandle<LoadRequest>(model.path() + ".gone", FileType::things, host));
    queue->post(7, makeHandle<ExitRequest>());
    startRenderThread(queue, host);
    host->waitForEnd();
    const auto events = host->events();
    ASSERT_GE(events.size(), 3u);
    std::vector<std::string> told;
    for (const std::string& event : events)
        if (!event.starts_with("progress") && !event.starts_with("ended")) told.push_back(event);
    EXPECT_EQ(told.front(), "bad file vertex number out of range\nin " + model.path());
    EXPECT_TRUE(told[1].starts_with("warning " + model.path() + ".gone: ")) << told[1];
    EXPECT_EQ(told.back(), "thread ended");
    EXPECT_EQ(told.size(), 3u);
}

TEST(LoadRequest, IsNamedAfterTheFileAndNamesItsStages)
{
    const auto host = makeHandle<FakeHost>();
    const struct { const char* path; FileType type; const char* name; int first, count; } cases[] = {
        {"C:\\models\\tower.thf", FileType::things, "tower.thf", 584, 0},
        {"/models/tower.dxf", FileType::dxf, "tower.dxf", 585, 1},
        {"tower.man", FileType::man, "tower.man", 586, 1},
    };
    for (const auto& c : cases) {
        const LoadRequest load(c.path, c.type, host);
        EXPECT_EQ(load.name, c.name);
        EXPECT_EQ(load.firstStageText, c.first) << c.name;
        EXPECT_EQ(load.stageTexts, c.count) << c.name;
    }
}

}   // namespace belvor
