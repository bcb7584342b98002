#include "calcore/Scanner.h"
#include "platform/Files.h"
#include "platform/Win32Error.h"
#include "tests/support/Files.h"
#include "view/ViewCommands.h"
#include "view/ViewParameters.h"

#include <gtest/gtest.h>

#include <limits>

namespace belvor {
namespace {

using test::TempFile;

const std::string header = "Belvor View Parameters 1.0\n";

}   // namespace

TEST(ViewCommands, WholeModelJustFitsTheSphere)
{
    const struct {
        int width, height;
        double distance;
    } cases[] = {
        {800, 600, 4.68668256792222},
        {600, 800, 4.68668256792222},
        {1280, 1024, 4.51001180672511},
    };
    for (const auto& c : cases) {
        const ViewParameters view = wholeModel(freshView(), {c.width, c.height});
        EXPECT_NEAR((view.eye - view.lookAt).length(), c.distance, 1e-12 * c.distance) << c.width;
        EXPECT_EQ(view, wholeModel(view, {c.width, c.height})) << "twice is once";
    }
}

TEST(ViewCommands, ZoomAndLookAtChangeNothingElse)
{
    ViewParameters view = freshView();
    view.imageSaved = true;
    view.lookAt = {1, 2, 3};
    ViewParameters expected = view;
    expected.zoom = 1.6;
    ViewParameters wider = increaseZoomAngle(increaseZoomAngle(view));
    EXPECT_NEAR(std::exchange(wider.zoom, 1.6), 1.6, 1e-15);
    EXPECT_EQ(wider, expected);
    EXPECT_FALSE(wider.imageSaved);
    expected = view;
    expected.lookAt = {};
    EXPECT_EQ(centreLookAt(view), expected);
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

    view.eye = {1.25, -2.5, 1e-7};
    view.parallel = true;
    for (const double radius : {50.0, 0.0}) {   // a model without size counts as one of radius 1
        ASSERT_TRUE(view.write(file.path(), {100, 200, -300}, radius));
        ASSERT_TRUE(read.read(file.path(), {100, 200, -300}, radius));
        EXPECT_NEAR((read.eye - view.eye).length(), 0, 1e-5) << radius;
        EXPECT_TRUE(read.parallel);
        EXPECT_EQ(read.lights, view.lights);
    }
}

TEST(ViewParameters, RefuseOtherHeaders)
{
    const struct {
        const char* why;
        std::string text;
        bool good;
    } cases[] = {
        {"header alone", "Belvor View Parameters 1.0", true},
        {"CR LF", "Belvor View Parameters 1.0\r\n1 2 3\r\n", true},
        {"two CR", "Belvor View Parameters 1.0\r\r\n", false},
        {"a blank behind", "Belvor View Parameters 1.0 \n", false},
        {"other case", "belvor view parameters 1.0\n", false},
        {"later version", "Belvor View Parameters 1.01\n", false},
        {"empty", "", false},
        {"one endless line", "Belvor View Parameters 1.0" + std::string(1000, ' '), false},
        {"cut short by Ctrl-Z", "Belvor View Param\x1A", false},
    };
    for (const auto& c : cases)
        EXPECT_EQ(ViewParameters().read(TempFile("header.bvp", c.text).path(), {}, 1), c.good) << c.why;
    EXPECT_FALSE(ViewParameters().read("no/such/view.bvp", {}, 1));
    EXPECT_FALSE(ViewParameters().read("/dev/zero", {}, 1)) << "without reading to an end that never comes";
}

TEST(ViewParameters, KeepWhatAShortFileDoesNotSay)
{
    const double most = std::numeric_limits<double>::max();
    const struct {
        const char* why;
        std::string text;
        double eye, zoom, sky;
        bool parallel;
        double intensities[5];
    } cases[] = {
        {"nothing", "", -1, 0.8, 0.4, false, {}},   // 0 in model coordinates
        {"a broken number is 0, and the last one read", "1 x 3\n4 5 6\n0.5\n", -0.5, 0.8, 0.4, false, {}},
        {"broken zoom", "2 4 6 2 4 6 zoom 1 0.9 0.9 1 1 1", 0, 0, 0.4, false, {}},
        {"no projection kind", "2 4 6 2 4 6 0.5 2 0.9 0.9 1 1 1", 0, 0.5, 0.4, true, {}},
        {"two lights", "2 4 6 2 4 6 0.5 1 0.9 0.9 10 20 0.3 30 40 0.7\n", 0, 0.5, 0.9, true, {0.3, 0.7}},
        {"half a light", "2 4 6 2 4 6 0.5 1 0.9 0.9 10 20 0.3 30 40", 0, 0.5, 0.9, true, {0.3}},
        {"seven lights",
         "2 4 6 2 4 6 0.5 1 0.9 0.9 1 1 1 1 1 2 1 1 3 1 1 4 1 1 5 1 1 6 1 1 7",
         0,
         0.5,
         0.9,
         true,
         {1, 2, 3, 4, 5}},
        {"behind the first megabyte", std::string(2 << 20, ' ') + "2 4 6 2 4 6 0.5", -1, 0.8, 0.4, false, {}},
        {"projection too large for 64 bits",
         "2 4 6 2 4 6 0.5 99999999999999999999 0.9",
         0,
         0.5,
         0.4,
         true,
         {}},
        {"zoom too large for a double", "2 4 6 2 4 6 1e999 1", 0, most, 0.4, false, {}},
    };
    for (const auto& c : cases) {
        const TempFile file("short.bvp", header + c.text);
        ViewParameters view;
        view.imageSaved = true;
        ASSERT_TRUE(view.read(file.path(), {2, 4, 6}, 2)) << c.why;
        EXPECT_EQ(view.eye[0], c.eye) << c.why;
        EXPECT_EQ(view.zoom, c.zoom) << c.why;
        EXPECT_EQ(view.skyIntensity, c.sky) << c.why;
        EXPECT_EQ(view.parallel, c.parallel) << c.why;
        EXPECT_FALSE(view.imageSaved) << c.why;
        ASSERT_EQ(view.lights.size(), 5u) << c.why;
        for (std::size_t i = 0; i < 5; ++i)
            EXPECT_EQ(view.lights[i].intensity, c.intensities[i]) << c.why << i;
    }
}

TEST(ViewParameters, TellTheFirstNumberThatWasReadPast)
{
    const struct {
        const char* why;
        std::string text;
        int line;   // 0: no fault
        ViewValue value;
        int light;
    } cases[] = {
        {"whole", "1 2 3\n4 5 6\n0.5\n1\n1\n1\n1 1 1\n", 0, {}, 0},
        {"no lights", "1 2 3\n4 5 6\n0.5\n0\n1\n1", 0, {}, 0},
        {"more lights than there are", "1 2 3 4 5 6 0.5 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 x", 0, {}, 0},
        {"header alone", "", 2, ViewValue::eye, 0},
        {"a letter in the eye", "1 2x 3\n4 5 6\n", 2, ViewValue::eye, 0},
        {"a comma in the look-at point", "1 2 3\r\n4,5 5 6\r\n", 3, ViewValue::lookAt, 0},
        {"zoom too large", "1 2 3\n4 5 6\n1e999\n1\n", 4, ViewValue::zoom, 0},
        {"projection in words", "1 2 3\n4 5 6\n0.5\nperspective\n", 5, ViewValue::projection, 0},
        {"projection 2", "1 2 3\n4 5 6\n0.5\n2\n1\n1\n", 5, ViewValue::projection, 0},
        {"cut before the sky", "1 2 3\n4 5 6\n0.5\n1", 5, ViewValue::sky, 0},
        {"cut before the ground", "1 2 3\n4 5 6\n0.5\n1\n1\n", 7, ViewValue::ground, 0},
        {"half of the second light", "1 2 3\n4 5 6\n0.5\n1\n1\n1\n1 1 1\n30 60\n", 10, ViewValue::light, 2},
    };
    for (const auto& c : cases) {
        std::optional<ViewFileFault> fault;
        ASSERT_TRUE(ViewParameters().parse(header + c.text, {}, 1, &fault)) << c.why;
        EXPECT_EQ(fault.has_value(), c.line != 0) << c.why;
        if (!fault) continue;
        EXPECT_EQ(fault->line, c.line) << c.why;
        EXPECT_EQ(fault->value, c.value) << c.why;
        EXPECT_EQ(fault->light, c.light) << c.why;
    }
}

TEST(ViewParameters, OfAnotherFileReadOnlyItsBeginning)
{
    const struct {
        const char* why;
        std::string bytes;
        std::size_t most;
    } cases[] = {
        {"zeros", std::string(1 << 20, '\0'), 100},
        {"one endless line", "Belvor View Parameters 1.0" + std::string(1 << 20, ' '), 100},
        {"a view with a long tail", header + std::string(3 << 20, '\n'), maxViewFileSize},
    };
    for (const auto& c : cases) {
        std::string bytes;
        EXPECT_TRUE(readViewFile(TempFile("large.bvp", c.bytes).path(), bytes)) << c.why;
        EXPECT_LE(bytes.size(), c.most) << c.why;
    }
}

TEST(Win32Error, NamesThePlaceAndTheSystemsReason)
{
    const std::string reason = Win32Error("", 2).what();
    EXPECT_NE(reason.find_first_not_of(' '), std::string::npos);
    EXPECT_EQ(reason.find(": "), std::string::npos) << "no place, no colon: " << reason;
    EXPECT_EQ(Win32Error("GetClientRect", 2).what(), "GetClientRect: " + reason);
    for (const std::string unit : {"x", "\xC3\xA9"}) {   // one byte a character, two
        std::string path = "C:\\";
        while (path.size() < 500) path += unit;
        const std::string text = Win32Error(path + "\\model.thf", 2).what();
        EXPECT_LE(text.size(), 255u);
        EXPECT_GT(text.size(), 252u);
        EXPECT_TRUE(text.starts_with("..." + unit)) << text;
        EXPECT_TRUE(text.ends_with("\\model.thf: " + reason)) << text;
    }
}

TEST(Scanner, TakesNumbersAsStreamsDo)
{
    const struct {
        const char* text;
        bool good;
        double value;
        const char* rest;
    } cases[] = {
        {"1.5.2", true, 1.5, ".2"},
        {"+7e1x", true, 70, "x"},
        {"1e", false, 0, ""},
        {"-", false, 0, ""},
        {"x", false, 0, "x"},
        {" \t\n3", true, 3, ""},
        {"", false, 9, ""},
        {"-.5-3", true, -0.5, "-3"},
        {"1e400", false, std::numeric_limits<double>::max(), ""},
        {"-1e400", false, -std::numeric_limits<double>::max(), ""},
        {"1e-400", true, 0, ""},
        {"0x10", true, 0, "x10"},
        {"inf", false, 0, "inf"},
        {"1e+", false, 0, ""},
        {"123456789012345678901234567890", true, 123456789012345678901234567890.0, ""},
        {"0.1000000000000000055511151231257827", true, 0.1, ""},
        {"9007199254740993", true, 9007199254740992.0, ""},
        {"4.35", true, 4.35, ""},
        {"1e22", true, 1e22, ""},
        {"1e23", true, 1e23, ""},
        {"-0", true, -0.0, ""},
    };
    for (const auto& c : cases) {
        Scanner<> scanner{std::string_view(c.text)};
        double value = 9;
        EXPECT_EQ(scanner.real(value), c.good) << c.text;
        EXPECT_EQ(value, c.value) << c.text;
        EXPECT_EQ(std::string(scanner.position(), scanner.end()), c.rest) << c.text;
    }
    for (const char* const text : {"9223372036854775808", "-9223372036854775808", "99999999999999999999 1"}) {
        Scanner<> scanner{std::string_view(text)};
        std::int64_t value = 9;
        EXPECT_FALSE(scanner.integer(value)) << text;
        EXPECT_EQ(value, 0) << text;
    }
}

}   // namespace belvor
