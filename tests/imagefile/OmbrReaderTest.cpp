#include "imagefile/OmbrReader.h"

#include "imagefile/OmbrBuff.h"
#include "tests/support/Models.h"

#include <gtest/gtest.h>

using namespace belvor;

namespace {

constexpr int width = 7, height = 5;

/// An Ombr file of the box, with one row record of 64 bytes a row.
std::string boxPicture()
{
    const test::TempFile file("box.omb");
    const Handle<Model> model = test::thingsModel(test::boxText);
    const Scene scene = buildScene(wholeModel(freshView(), {width, height}), test::placeOf(*model),
                                   {width, height}, width, height);
    const auto sink = makeHandle<OmbrBuff>(file.path(), model, scene.camera, width, height);
    test::RecordingReporter patient;
    model->render(*scene.camera, *scene.lights, *sink, patient);
    sink->finish();
    return file.bytes();
}

/// Where the first fault is; −1 for none.
long long faultIn(const std::string& bytes)
try {
    MemorySource source(bytes);
    OmbrReader reader(source);
    reader.checkRows([](int) {});
    return -1;
} catch (const OmbrFault& fault) {
    return static_cast<long long>(fault.offset());
}

}   // namespace

TEST(OmbrReader, FindsEveryChangedByteThatIsNoPixelColourNameOrNumber)
{
    const std::string whole = boxPicture();
    const std::size_t rowsEnd = 8 + 64 * height, records = whole.find("Back") - 9;
    ASSERT_EQ(records, rowsEnd);
    const std::size_t materialImage = rowsEnd + 6 * (9 + 5) + 2 + 2;   // names of 4, 5 and 6 bytes and a zero
    const std::size_t camera = materialImage + 6 * height + 16 + 114 + 6 * height + 12;
    const std::size_t text = whole.find("Belvor 1.1.7");
    std::size_t found = 0;
    for (std::size_t at = 0; at < whole.size(); ++at) {
        const bool padding = at >= 8 && at < rowsEnd && (at - 8) % 64 == 63;
        const bool isFree = (at >= 8 && at < materialImage && !padding)
                            || (at >= camera + 4 && at < camera + 200) || (at >= text && at < text + 26)
                            || (at >= 5 && at < 8);
        if (isFree) continue;
        std::string changed = whole;
        changed[at] = static_cast<char>(changed[at] ^ 0x10);
        const long long fault = faultIn(changed);
        EXPECT_NE(fault, -1) << at;
        found += fault == static_cast<long long>(at);
    }
    EXPECT_GT(found, 500u) << "most faults are told where they are";
    for (std::size_t size = 0; size < whole.size(); ++size)
        EXPECT_NE(faultIn(whole.substr(0, size)), -1) << size;
    EXPECT_EQ(faultIn(whole + '\0'), static_cast<long long>(whole.size()));
}

TEST(OmbrReader, TellsFaultsOfPixelsAndRecords)
{
    const std::string whole = boxPicture();
    MemorySource source(whole);
    OmbrReader reader(source);
    reader.readRow(2);
    std::size_t drawn = 0, empty = 0;
    for (std::size_t i = 0; i < width; ++i) (reader.material()[i] != 0 ? drawn : empty) = i;
    const std::size_t row = 8 + 2 * 64, materials = row + 4 * width, colours = row + 6 * width;
    const std::size_t record = whole.find("Base") - 9;
    // Columns: why, at, value, fault.
    const std::tuple<const char*, std::size_t, char, std::size_t> cases[] = {
        {"a material that no record has", materials + 2 * drawn, 99, materials + 2 * drawn},
        {"a material where nothing is", materials + 2 * empty, 1, materials + 2 * empty},
        {"none where something is", materials + 2 * drawn, 0, materials + 2 * drawn},
        {"a depth where nothing is", row + 4 * empty, 0, materials + 2 * empty},
        {"an empty pixel of another colour", colours + 3 * empty, 9, colours + 3 * empty},
        {"a chain that leads elsewhere", record, 1, record},
        {"a material without a number", record + 4, 0, record + 4},
    };
    for (const auto& [why, at, value, fault] : cases) {
        std::string changed = whole;
        changed[at] = value;
        EXPECT_EQ(faultIn(changed), static_cast<long long>(fault)) << why;
    }
}
