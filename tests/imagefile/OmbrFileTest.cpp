#include "imagefile/OmbrBuff.h"
#include "tests/support/Models.h"

#include <gtest/gtest.h>

using namespace belvor;

// What a whole file holds is tests/picture/'s.

TEST(OmbrBuff, AllocatesNothingForAPictureThatDoesNotFit)
{
    const test::TempFile target("large.omb");
    const Handle<Model> model = test::thingsModel(test::boxText);
    const Handle<Camera> camera = buildScene(freshView(), test::placeOf(*model), {24, 18}, 24, 18).camera;
    for (const int size : {2147483647, 100000000, 0, -1}) {
        EXPECT_THROW(OmbrBuff(target.path(), model, camera, size, 75), OmbrFile::Error) << size;
        EXPECT_THROW(OmbrBuff(target.path(), model, camera, 100, size), OmbrFile::Error) << size;
    }
}

TEST(OmbrBuff, AnAbandonedPictureIsCompleteButReplacesNoFile)
{
    const Handle<Model> model = test::thingsModel(test::boxText);
    const Scene scene =
        buildScene(wholeModel(freshView(), {24, 18}), test::placeOf(*model), {24, 18}, 24, 18);
    const auto abandonOver = [&](const char* old) {
        const test::TempFile target("abandoned.omb", old);
        test::RecordingReporter impatient(5);
        EXPECT_THROW(model->render(*scene.camera, *scene.lights,
                                   *makeHandle<OmbrBuff>(target.path(), model, scene.camera, 24, 18),
                                   impatient),
                     Reporter::Abandoned);
        return target.bytes();
    };
    const std::string bytes = abandonOver("");
    const std::size_t colour =
        static_cast<unsigned char>(bytes.at(4)) + 256u * static_cast<unsigned char>(bytes.at(5));
    EXPECT_EQ(bytes.size(), colour + 174);
    EXPECT_EQ(abandonOver("the picture of yesterday"), "the picture of yesterday");
}
