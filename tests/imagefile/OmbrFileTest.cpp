#include "imagefile/OmbrBuff.h"
#include "resources/Texts.h"
#include "tests/support/Models.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>

using namespace belvor;

// What a whole file holds is tests/picture/'s.

TEST(OmbrFile, RefusesPicturesBeyondItsCounts)
{
    // Columns: why, width, height, materials, good.
    const std::tuple<const char*, long long, long long, unsigned long long, bool> cases[] = {
        {"largest square", 16383, 16383, 0, true},
        {"too wide for its byte counts", 16384, 1, 0, false},
        {"too high", 1, 65536, 0, false},
        {"beyond 4 GiB", 16383, 30000, 0, false},
        {"beyond 4 GiB by its materials alone", 16383, 16383, 2000000000, false},
    };
    for (const auto& [why, width, height, materials, good] : cases) {
        try {
            OmbrFile::checkSize(width, height, materials);
            EXPECT_TRUE(good) << why;
        } catch (const OmbrFile::Error& error) {
            EXPECT_FALSE(good) << why;
            EXPECT_STREQ(error.what(), std::strerror(EFBIG));
        }
    }
    EXPECT_THROW(OmbrFile("no/such/folder/x.omb", 1, 1, "v", {}), OmbrFile::Error);
}

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
    EXPECT_EQ(bytes.substr(colour, 2), std::string("\x0E\0", 2));
    EXPECT_EQ(abandonOver("the picture of yesterday"), "the picture of yesterday");
}

TEST(OmbrBuff, ASecondPictureIntoTheSameFileIsRefusedWhileTheFirstIsWritten)
{
    const test::TempFile target("twice.omb", "old");
    const Handle<Model> model = test::thingsModel(test::boxText);
    const Scene scene = buildScene(freshView(), test::placeOf(*model), {2, 2}, 2, 2);
    const auto first = makeHandle<OmbrBuff>(target.path(), model, scene.camera, 2, 2);
    try {
        OmbrBuff(target.path(), model, scene.camera, 2, 2);
        FAIL() << "both would be written";
    } catch (const OmbrFile::Error& error) {
        EXPECT_STREQ(error.what(), textOf(Text::fileBeingWritten));
    }
    test::RecordingReporter patient;
    model->render(*scene.camera, *scene.lights, *first, patient);
    EXPECT_EQ(target.bytes(), "old");
    first->finish();
    EXPECT_EQ(target.bytes().substr(0, 3), "II*");
    EXPECT_NO_THROW(OmbrBuff(target.path(), model, scene.camera, 2, 2));
}
