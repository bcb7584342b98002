#include "imagefile/OmbrBuff.h"
#include "tests/support/Models.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>

namespace belvor {
namespace {

using test::TempFile;

std::uint32_t word(const std::string& bytes, std::size_t offset)
{
    std::uint32_t value = 0;
    for (std::size_t i = 4; i-- > 0;) value = value << 8 | static_cast<std::uint8_t>(bytes.at(offset + i));
    return value;
}

}   // namespace

TEST(OmbrFile, RefusesPicturesItCannotNumber)
{
    const struct { const char* why; long long width, height; unsigned long long materials; bool good; } cases[] = {
        {"smallest", 1, 1, 0, true},
        {"largest square", 16383, 16383, 0, true},
        {"too wide for its byte counts", 16384, 1, 0, false},
        {"too high", 1, 65536, 0, false},
        {"no pixel", 0, 1, 0, false},
        {"beyond 4 GiB", 16383, 30000, 0, false},
        {"beyond 4 GiB by its materials alone", 16383, 16383, 2000000000, false},
    };
    for (const auto& c : cases) {
        try {
            OmbrFile::checkSize(c.width, c.height, c.materials);
            EXPECT_TRUE(c.good) << c.why;
        } catch (const OmbrFile::Error& error) {
            EXPECT_FALSE(c.good) << c.why;
            EXPECT_EQ(error.code(), EFBIG);
            EXPECT_STREQ(error.what(), std::strerror(EFBIG));
        }
    }
    EXPECT_THROW(OmbrFile("no/such/folder/x.omb", 1, 1, "v", {}), OmbrFile::Error);
}

TEST(OmbrBuff, ClosesAnAbandonedFileAndTellsTheModelsUnits)
{
    for (const bool abandoned : {false, true}) {
        const TempFile target("box.omb");
        const Handle<Model> model = test::thingsModel(test::boxText);
        model->setUnits({25.4, 7});
        const Scene scene = buildScene(wholeModel(freshView(), {24, 18}), test::placeOf(*model), {24, 18}, 24, 18);
        Handle<OmbrBuff> sink = makeHandle<OmbrBuff>(target.path(), model, scene.camera, 24, 18);
        test::RecordingReporter reporter(abandoned ? 5 : 1000);
        try {
            model->render(*scene.camera, *scene.lights, *sink, reporter);
            EXPECT_FALSE(abandoned);
            sink->finish();
        } catch (const Reporter::Abandoned&) {
            EXPECT_TRUE(abandoned);
        }
        sink = {};
        const std::string bytes = target.bytes();
        const std::uint32_t colour = word(bytes, 4), depth = word(bytes, colour + 2 + 12 * 14);
        EXPECT_EQ(bytes.size(), colour + 174u) << "ends with its directories";
        const std::uint32_t units = depth - 12;   // the last of the camera's block
        double scale = 0;
        std::memcpy(&scale, bytes.data() + units, 8);
        EXPECT_EQ(scale, 25.4);
        EXPECT_EQ(word(bytes, units + 8), 7u);
    }
}

}   // namespace belvor
