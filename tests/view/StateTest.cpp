#include "platform/Files.h"
#include "tests/support/Files.h"
#include "text/JsonText.h"
#include "view/ViewCommands.h"
#include "view/ViewParameters.h"

#include <gtest/gtest.h>

using namespace belvor;

namespace {

using test::TempFile;
using namespace std::string_literals;

const std::string header = "Belvor View Parameters 1.0\n";

}   // namespace

TEST(ViewCommands, WholeModelFitsTheSphereIntoThePicture)
{
    using Row = std::tuple<int, int, double>;
    for (const auto& [width, height, distance] :
         {Row{800, 600, 4.68668256792222}, Row{1280, 1024, 4.51001180672511}}) {
        const ViewParameters view = wholeModel(freshView(), {width, height});
        EXPECT_NEAR((view.eye - view.lookAt).length(), distance, 1e-12 * distance) << width;
        EXPECT_EQ(view, wholeModel(view, {width, height})) << "applying it twice changes nothing";
    }
}

TEST(ViewCommands, ZoomAndLookAtChangeNothingElse)
{
    ViewParameters view = freshView();
    view.lookAt = {1, 2, 3};
    ViewParameters next = centreLookAt(increaseZoomAngle(increaseZoomAngle(view)));
    EXPECT_NEAR(std::exchange(next.zoom, view.zoom), 1.6, 1e-15);
    EXPECT_EQ(std::exchange(next.lookAt, view.lookAt), (Point<3>{0, 0, 0}));
    EXPECT_EQ(next, view);
}

TEST(ViewParameters, AreWrittenInModelCoordinatesAndReadBackToSixDigits)
{
    const TempFile file("view.bvp");
    ViewParameters view = wholeModel(freshView(), {800, 600}), read;
    ASSERT_TRUE(view.write(file.path(), {1, 2, 3}, 3.74165738677394));
    std::string text = file.bytes();
    EXPECT_NE(text.find(std::string("Parameters 1.0") + textLineEnd), std::string::npos);
    std::erase(text, '\r');
    EXPECT_EQ(text, header
                        + "-9.73641 -8.73641 11.7732\n1 2 3\n0.364\n0\n0.4\n0.1\n"
                          "-30 60 0.6\n180 30 0\n0 30 0\n90 30 0\n-90 30 0\n");
    EXPECT_FALSE(view.write("no/such/folder/view.bvp", {}, 1));

    view.eye = {1.25, -2.5, 0};
    view.parallel = true;
    for (const double radius : {50.0, 0.0}) {   // a model without size counts as one of radius 1
        ASSERT_TRUE(view.write(file.path(), {100, 200, -300}, radius));
        ASSERT_TRUE(read.read(file.path(), {100, 200, -300}, radius));
        EXPECT_EQ(read, view) << radius;
    }
}

TEST(ViewParameters, FilesWithAnotherHeaderAreRefused)
{
    ViewParameters view;
    const auto accepts = [&view](const std::string& text) {
        return view.read(TempFile("header.bvp", text).path(), {}, 1);
    };
    const std::string bare = "Belvor View Parameters 1.0";
    EXPECT_TRUE(accepts(bare) && accepts(bare + "\r\n1 2 3\r\n"));
    for (const std::string& bad :
         {bare + "\r\r\n", bare + " \n", "belvor view parameters 1.0\n"s, bare + "1\n", ""s,
          bare + std::string(1000, ' '), "Belvor View Param\x1A"s})   // the last is cut short by Ctrl-Z
        EXPECT_FALSE(accepts(bad)) << bad;
    EXPECT_FALSE(view.read("no/such/view.bvp", {}, 1));
    EXPECT_FALSE(view.read("/dev/zero", {}, 1)) << "a file without end is not read to its end";
    std::string bytes;
    EXPECT_TRUE(readViewFile(TempFile("large.bvp", header + std::string(3 << 20, '\n')).path(), bytes));
    EXPECT_LE(bytes.size(), maxViewFileSize);
}

TEST(ViewParameters, ValuesMissingInAShortFileKeepTheirDefaults)
{
    // Columns: why, text, [x of the eye, zoom, sky, parallel, five lights]. The eye is 0 in model
    // coordinates.
    const std::tuple<const char*, std::string, const char*> cases[] = {
        {"a broken number is 0 and ends the reading", "1 x 3\n4 5 6\n0.5\n",
         "[-0.5,0.8,0.4,false,0,0,0,0,0]"},
        {"broken zoom", "2 4 6 2 4 6 zoom 1 0.9 0.9 1 1 1", "[0,0,0.4,false,0,0,0,0,0]"},
        {"unknown projection", "2 4 6 2 4 6 0.5 2 0.9 0.9 1 1 1", "[0,0.5,0.4,true,0,0,0,0,0]"},
        {"half a light", "2 4 6 2 4 6 0.5 1 0.9 0.9 10 20 0.3 30 40", "[0,0.5,0.9,true,0.3,0,0,0,0]"},
        {"seven lights", "2 4 6 2 4 6 0.5 1 0.9 0.9 1 1 1 1 1 2 1 1 3 1 1 4 1 1 5 1 1 6 1 1 7",
         "[0,0.5,0.9,true,1,2,3,4,5]"},
    };
    for (const auto& [why, text, values] : cases) {
        ViewParameters view;
        view.imageSaved = true;
        ASSERT_TRUE(view.read(TempFile("short.bvp", header + text).path(), {2, 4, 6}, 2)) << why;
        EXPECT_FALSE(view.imageSaved) << why;
        JsonText is;
        is.beginList().value(view.eye[0]).value(view.zoom).value(view.skyIntensity).value(view.parallel);
        for (const ParallelLightSetting& light : view.lights) is.value(light.intensity);
        EXPECT_EQ(is.endList().text(), values) << why;
    }
}

TEST(ViewParameters, TheFirstUnreadableNumberIsReported)
{
    ViewParameters view;
    const std::string points = header + "1 2 3\n4 5 6\n";
    using Row = std::tuple<const char*, int, ViewValue, int>;
    for (const auto& [text, line, value, light] :
         {Row{"1e999\n1\n", 4, ViewValue::zoom, 0}, Row{"0.5\n2\n1\n1\n", 5, ViewValue::projection, 0},
          Row{"0.5\n1\n1\n", 7, ViewValue::ground, 0},
          Row{"0.5\n1\n1\n1\n1 1 1\n30 60\n", 10, ViewValue::light, 2}}) {
        std::optional<ViewFileFault> fault;
        ASSERT_TRUE(view.parse(points + text, {}, 1, &fault) && fault) << text;
        EXPECT_EQ(std::tie(fault->line, fault->value, fault->light), std::tie(line, value, light)) << text;
    }
    std::optional<ViewFileFault> fault;
    EXPECT_TRUE(view.parse(points + "0.5\n1\n1\n1\n1 1 1\n", {}, 1, &fault) && !fault);
}
