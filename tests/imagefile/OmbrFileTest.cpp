#include "imagefile/OmbrBuff.h"
#include "tests/support/Models.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>

namespace belvor {
namespace {

using test::TempFile;

std::uint32_t at(const std::string& bytes, std::size_t offset, int size)
{
    std::uint32_t value = 0;
    for (int i = size - 1; i >= 0; --i) value = value << 8 | static_cast<std::uint8_t>(bytes.at(offset + static_cast<std::size_t>(i)));
    return value;
}

/// The value field of a directory's entry.
std::uint32_t entry(const std::string& bytes, std::size_t directory, std::uint32_t tag)
{
    for (std::uint32_t i = 0; i < at(bytes, directory, 2); ++i)
        if (at(bytes, directory + 2 + 12 * i, 2) == tag) return at(bytes, directory + 2 + 12 * i + 8, 4);
    ADD_FAILURE() << "no entry " << tag;
    return 0;
}

std::string write(int width, int height, const std::vector<std::string>& materials)
{
    const TempFile target("picture.omb");
    OmbrFile file(target.path(), static_cast<std::uint16_t>(width), static_cast<std::uint16_t>(height), "Belvor 1.1.7 (Dec 16 1997)", {});
    for (int row = 0; row < height; ++row) {
        for (std::size_t i = 0; i < static_cast<std::size_t>(width); ++i) {
            file.depth[i] = static_cast<std::uint32_t>(row) << 16 | static_cast<std::uint32_t>(i);
            file.material[i] = static_cast<std::uint16_t>(7 * row);
            file.rgb[3 * i + 1] = static_cast<std::uint8_t>(row);
        }
        file.writeRow();
    }
    std::uint16_t index = 1;
    for (const std::string& name : materials) file.addMaterial(index++, 1, 2, 3, name);
    file.close();
    file.close();   // of a closed file: nothing
    return target.bytes();
}

}   // namespace

TEST(OmbrFile, LaysOutItsBytesAsWorkedOut)
{
    const struct {
        const char* why;
        int width, height;
        std::vector<std::string> materials;
        std::uint32_t colour, depth, material, size, head;
    } cases[] = {
        {"two materials", 5, 3, {"DEFAULT", "Steel"}, 754, 564, 220, 928, 170},
        {"six materials", 24, 18, {"Back", "Base", "Front", "Left", "Right", "Roof"}, 4822, 4542, 4108, 4996, 3970},
        {"no material", 24, 18, {}, 4734, 4454, 4020, 4908, 0},
        {"one column", 1, 4, {}, 642, 446, 96, 816, 0},
    };
    for (const auto& c : cases) {
        const std::string bytes = write(c.width, c.height, c.materials);
        ASSERT_EQ(bytes.size(), c.size) << c.why;
        EXPECT_EQ(at(bytes, 0, 4), 0x002A4949u) << c.why;
        EXPECT_EQ(at(bytes, 4, 4), c.colour) << c.why;
        const auto nextOf = [&](std::uint32_t directory) { return at(bytes, directory + 2 + 12 * at(bytes, directory, 2), 4); };
        EXPECT_EQ(nextOf(c.colour), c.depth) << c.why;
        EXPECT_EQ(nextOf(c.depth), c.material) << c.why;
        EXPECT_EQ(nextOf(c.material), 0u) << c.why;
        const std::uint32_t block = entry(bytes, c.material, 34953);
        EXPECT_EQ(at(bytes, block + 8, 4), c.materials.size()) << c.why;
        EXPECT_EQ(at(bytes, block + 12, 4), c.head) << c.why;
        // The last row, by way of the strip arrays.
        const std::uint32_t last = static_cast<std::uint32_t>(c.height) - 1;
        const std::uint32_t depthStrip = at(bytes, entry(bytes, c.depth, 273) + 4 * last, 4);
        EXPECT_EQ(at(bytes, depthStrip, 4), last << 16) << c.why;
        EXPECT_EQ(at(bytes, at(bytes, entry(bytes, c.material, 273) + 4 * last, 4), 2), 7 * last) << c.why;
        EXPECT_EQ(at(bytes, at(bytes, entry(bytes, c.colour, 273) + 4 * last, 4) + 1, 1), last) << c.why;
    }
}

TEST(OmbrFile, KeepsShortStripArraysInTheEntry)
{
    for (const int height : {1, 2}) {
        const std::string bytes = write(24, height, {});
        const std::uint32_t colour = at(bytes, 4, 4);
        EXPECT_EQ(entry(bytes, colour, 279), height == 1 ? 72u : 72u << 16 | 72u);
        const std::uint32_t offsets = entry(bytes, colour, 273);
        EXPECT_EQ(height == 1 ? offsets : at(bytes, offsets, 4), 8u + 144u);
    }
}

TEST(OmbrFile, ChainsTheMaterialsBackwards)
{
    const std::string bytes = write(5, 3, {"DEFAULT", "Steel"});
    EXPECT_EQ(at(bytes, 170, 4), 152u) << "the record before";
    EXPECT_EQ(at(bytes, 174, 2), 2u);
    EXPECT_EQ(bytes.substr(176, 3), "\x01\x02\x03");
    EXPECT_STREQ(bytes.c_str() + 179, "Steel");
    EXPECT_EQ(at(bytes, 152, 4), 0u);
}

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

TEST(OmbrBuff, AbandonedEndsWithItsDirectories)
{
    const TempFile target("abandoned.omb");
    const Handle<Model> model = test::thingsModel(test::boxText);
    const Scene scene = buildScene(wholeModel(freshView(), {24, 18}), test::placeOf(*model), {24, 18}, 24, 18);
    test::RecordingReporter impatient(5);
    EXPECT_THROW(model->render(*scene.camera, *scene.lights, *makeHandle<OmbrBuff>(target.path(), model, scene.camera, 24, 18), impatient),
                 Reporter::Abandoned);
    const std::string bytes = target.bytes();
    const std::uint32_t colour = at(bytes, 4, 4);
    ASSERT_LT(colour + 174u, bytes.size() + 1);
    EXPECT_EQ(at(bytes, colour, 2), 14u);
}

TEST(OmbrBuff, HoldsPixelsMaterialsAndTheModelsUnits)
{
    const TempFile target("box.omb");
    const Handle<Model> model = test::thingsModel(test::boxText);
    model->setUnits({25.4, 7});
    const Scene scene = buildScene(wholeModel(freshView(), {24, 18}), test::placeOf(*model), {24, 18}, 24, 18);
    SilentReporter silent;
    const Handle<OmbrBuff> sink = makeHandle<OmbrBuff>(target.path(), model, scene.camera, 24, 18);
    model->render(*scene.camera, *scene.lights, *sink, silent);
    sink->finish();
    const std::string bytes = target.bytes();
    ASSERT_EQ(bytes.size(), 4996u);
    const std::size_t row = 8 + 9 * 216;
    EXPECT_NEAR(at(bytes, row + 4 * 12, 4), 1210995916u, 2) << "depth of pixel (12, 9)";
    EXPECT_EQ(at(bytes, row + 96 + 2 * 12, 2), 6u) << "its material";
    EXPECT_EQ(bytes.substr(row + 144 + 3 * 12, 3), "\x3E\x68\x6F") << "its colour";
    EXPECT_EQ(at(bytes, row, 4), 0xFFFFFFFFu) << "nothing at the border";
    const std::uint32_t block = entry(bytes, at(bytes, at(bytes, 4, 4) + 2 + 12 * 14, 4), 34953);
    double scale = 0;
    std::memcpy(&scale, bytes.data() + block + 16 + 7 * 24 + 16, 8);
    EXPECT_EQ(scale, 25.4);
    EXPECT_EQ(at(bytes, block + 16 + 7 * 24 + 24, 4), 7u);
    EXPECT_STREQ(bytes.c_str() + 3896 + 9, "Back") << "materials by name";
}

}   // namespace belvor
