#include "render/queue/RenderThread.h"
#include "session/ImageRequest.h"
#include "session/LoadRequest.h"
#include "tests/render/queue/FakeHost.h"
#include "tests/support/Files.h"
#include "tests/support/Models.h"

#include <gtest/gtest.h>

namespace belvor {
namespace {

using test::TempFile;

constexpr ImageSize size{40, 30};

Scene sceneOf(const Model& model)
{
    return buildScene(wholeModel(freshView(), size), test::placeOf(model), size, size.width, size.height);
}

/// Goes on with a loaded model as the main window does: keeps it and draws it into a file.
class DrawingHost : public FakeHost {
public:
    DrawingHost(Handle<RenderQueue> requests, std::string file)
        : queue(std::move(requests)),
          picture(std::move(file))
    {}
    void modelLoaded(std::uint32_t, Model* loaded) override
    {
        model = Handle<Model>(loaded);
        const Scene scene = sceneOf(*model);
        const auto sink = makeHandle<OmbrBuff>(picture, model, scene.camera, size.width, size.height);
        queue->post(imageFile,
                    makeHandle<ImageRequest>(picture, 1, Handle<RenderHost>(this), model, scene, sink));
        queue->post(7, makeHandle<ExitRequest>());
        queue = {};
    }
    Handle<Model> model;

private:
    Handle<RenderQueue> queue;
    std::string picture;
};

}   // namespace

TEST(RenderThreadRoad, LeadsFromAModelFileToTheSamePictureAsADirectRender)
{
    const TempFile model("box.thf", test::boxText), picture("box.omb"), direct("direct.omb");
    const auto queue = makeHandle<RenderQueue>();
    const auto host = makeHandle<DrawingHost>(queue, picture.path());
    queue->post(7, makeHandle<LoadRequest>(model.path(), FileType::things, 1, host));
    startRenderThread(queue, host);
    host->waitForEnd();
    ASSERT_TRUE(host->model);

    const Scene scene = sceneOf(*host->model);
    OmbrBuff sink(direct.path(), host->model, scene.camera, size.width, size.height);
    SilentReporter silent;
    host->model->render(*scene.camera, *scene.lights, sink, silent);
    sink.finish();
    EXPECT_EQ(picture.bytes(), direct.bytes());
}

}   // namespace belvor
