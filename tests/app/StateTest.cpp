#include "app/errors/BadFile.h"
#include "app/state/ViewCommands.h"
#include "app/state/ViewParameters.h"
#include "calcore/Scanner.h"
#include "platform/Files.h"
#include "platform/Win32Error.h"
#include "tests/support/Files.h"

#include <gtest/gtest.h>

#include <limits>

namespace belvor {
namespace {

using test::TempFile;

const std::string header = "Belvor View Parameters 1.0\n";

}   // namespace

TEST(ViewCommands, WholeModelJustFitsTheSphere)
{
    const struct { int width, height; double distance; } cases[] = {{800, 600, 4.68668256792222},
                                                                    {600, 800, 4.68668256792222},
                                                                    {1600, 1200, 4.68668256792222},
                                                                    {1280, 1024, 4.51001180672511},
                                                                    {1000, 1000, 4.01183191504524}};
    for (const auto& c : cases) {
        const ViewParameters view = wholeModel(freshView(), {c.width, c.height});
        EXPECT_NEAR((view.eye - view.lookAt).length(), c.distance, 1e-12 * c.distance) << c.width;
        EXPECT_EQ(view.lights, freshView().lights);
        EXPECT_TRUE(view == wholeModel(view, {c.width, c.height})) << "twice is once";
    }
    const Point<3> eye = wholeModel(freshView(), {800, 600}).eye;
    EXPECT_NEAR(eye[0], -2.86942724618848, 1e-12);
    EXPECT_NEAR(eye[2], 2.34473197831402, 1e-12);
}

TEST(ViewCommands, ZoomAndLookAtChangeNothingElse)
{
    ViewParameters view = freshView();
    view.imageSaved = true;
    view.lookAt = {1, 2, 3};
    const ViewParameters wider = increaseZoomAngle(increaseZoomAngle(view));
    EXPECT_NEAR(wider.zoom, 1.6, 1e-15);
    EXPECT_FALSE(wider.imageSaved);
    view.zoom = 0;
    EXPECT_TRUE(increaseZoomAngle(view) == view) << "nothing to widen";
    EXPECT_EQ(centreLookAt(view).lookAt, Point<3>());
    EXPECT_EQ(centreLookAt(view).eye, view.eye);
}

TEST(ViewParameters, AreWrittenInModelCoordinates)
{
    const TempFile file("view.bvp");
    const ViewParameters view = wholeModel(freshView(), {800, 600});
    ASSERT_TRUE(view.write(file.path(), {1, 2, 3}, 3.74165738677394));
    std::string text = file.bytes();
    EXPECT_NE(text.find(std::string("Parameters 1.0") + textLineEnd), std::string::npos);
    std::erase(text, '\r');
    EXPECT_EQ(text, header + "-9.73641 -8.73641 11.7732\n1 2 3\n0.364\n0\n0.4\n0.1\n-30 60 0.6\n180 30 0\n0 30 0\n90 30 0\n-90 30 0\n");
    EXPECT_FALSE(view.write("no/such/folder/view.bvp", {}, 1));
}

TEST(ViewParameters, ReadBackToSixDigitsAndAtTheSamePlace)
{
    const TempFile file("view.bvp");
    ViewParameters view = freshView(), read, far;
    view.eye = {1.25, -2.5, 1e-7};
    view.parallel = true;
    ASSERT_TRUE(view.write(file.path(), {100, 200, -300}, 50));
    ASSERT_TRUE(read.read(file.path(), {100, 200, -300}, 50));
    EXPECT_NEAR((read.eye - view.eye).length(), 0, 1e-5);
    EXPECT_TRUE(read.parallel);
    EXPECT_EQ(read.lights, view.lights);
    ASSERT_TRUE(far.read(file.path(), {100, 200, -300}, 100));
    EXPECT_NEAR((far.eye - Point<3>()).length(), (view.eye - Point<3>()).length() / 2, 1e-5) << "a model twice as large";
}

TEST(ViewParameters, RefuseOtherHeaders)
{
    const struct { const char* why; std::string text; bool good; } cases[] = {
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
    for (const auto& c : cases) {
        const TempFile file("header.bvp", c.text);
        ViewParameters view;
        EXPECT_EQ(view.read(file.path(), {}, 1), c.good) << c.why;
    }
    ViewParameters view;
    EXPECT_FALSE(view.read("no/such/view.bvp", {}, 1));
}

TEST(ViewParameters, KeepWhatAShortFileDoesNotSay)
{
    const Point<3> centre{2, 4, 6};
    const Point<3> fromNothing{-1, -2, -3};   // 0 in model coordinates, for a radius of 2
    const struct { const char* why; std::string text; Point<3> eye; double zoom, sky; bool parallel; double intensities[5]; } cases[] = {
        {"nothing", "", fromNothing, 0.8, 0.4, false, {0, 0, 0, 0, 0}},
        {"a broken number is 0, and the last one read", "1 x 3\n4 5 6\n0.5\n", {-0.5, -2, -3}, 0.8, 0.4, false, {0, 0, 0, 0, 0}},
        {"broken zoom", "2 4 6 2 4 6 zoom 1 0.9 0.9 1 1 1", {0, 0, 0}, 0, 0.4, false, {0, 0, 0, 0, 0}},
        {"no projection kind", "2 4 6 2 4 6 0.5 2 0.9 0.9 1 1 1", {0, 0, 0}, 0.5, 0.4, true, {0, 0, 0, 0, 0}},
        {"two lights", "2 4 6 2 4 6 0.5 1 0.9 0.9 10 20 0.3 30 40 0.7\n", {0, 0, 0}, 0.5, 0.9, true, {0.3, 0.7, 0, 0, 0}},
        {"half a light", "2 4 6 2 4 6 0.5 1 0.9 0.9 10 20 0.3 30 40", {0, 0, 0}, 0.5, 0.9, true, {0.3, 0, 0, 0, 0}},
        {"seven lights", "2 4 6 2 4 6 0.5 1 0.9 0.9 1 1 1 1 1 2 1 1 3 1 1 4 1 1 5 1 1 6 1 1 7", {0, 0, 0}, 0.5, 0.9, true, {1, 2, 3, 4, 5}},
        {"zoom too large for a double", "2 4 6 2 4 6 1e999 1", {0, 0, 0}, std::numeric_limits<double>::max(), 0.4, false, {0, 0, 0, 0, 0}},
    };
    for (const auto& c : cases) {
        const TempFile file("short.bvp", header + c.text);
        ViewParameters view;
        view.imageSaved = true;
        ASSERT_TRUE(view.read(file.path(), centre, 2)) << c.why;
        EXPECT_EQ(view.eye, c.eye) << c.why;
        EXPECT_EQ(view.zoom, c.zoom) << c.why;
        EXPECT_EQ(view.skyIntensity, c.sky) << c.why;
        EXPECT_EQ(view.parallel, c.parallel) << c.why;
        EXPECT_FALSE(view.imageSaved) << c.why;
        ASSERT_EQ(view.lights.size(), 5u) << c.why;
        for (std::size_t i = 0; i < 5; ++i) EXPECT_EQ(view.lights[i].intensity, c.intensities[i]) << c.why << i;
    }
}

TEST(ViewParameters, OfAModelWithoutSizeStayFinite)
{
    const TempFile file("point.bvp");
    ViewParameters view;
    ASSERT_TRUE(freshView().write(file.path(), {5, 5, 5}, 0));
    ASSERT_TRUE(view.read(file.path(), {5, 5, 5}, 0));
    EXPECT_TRUE(view.finite());
    EXPECT_NEAR((view.eye - freshView().eye).length(), 0, 1e-5);
}

TEST(BadFile, SaysWhatAndWhere)
{
    const struct { BadFile fault; const char* what; const char* box; } cases[] = {
        {{BadFile::duplicateBlock, "WALL", "a.dxf", 12}, "Duplicate BLOCK name WALL at line 12 in a.dxf", "Duplicate BLOCK name WALL\nat line 12 in a.dxf"},
        {{BadFile::duplicateBlock, "WALL", "a.dxf", BadFile::noLine}, "Duplicate BLOCK name WALL in a.dxf", "Duplicate BLOCK name WALL\nin a.dxf"},
        {{BadFile::materialExpected, "", BadFile::noLine}, "material expected", "material expected"},
        {{BadFile::groupNeeded, "70", "100%s.dxf", 3}, "Bad DXF group: item <70> needed at line 3 in 100%s.dxf", "Bad DXF group: item <70> needed\nat line 3 in 100%s.dxf"},
    };
    for (const auto& c : cases) {
        EXPECT_STREQ(c.fault.what(), c.what);
        EXPECT_EQ(c.fault.boxText(), c.box);
    }
}

TEST(Win32Error, NamesThePlaceAndTheSystemsReason)
{
    const std::string reason = Win32Error("", 2).what();
    EXPECT_NE(reason.find_first_not_of(' '), std::string::npos);
    EXPECT_EQ(reason.find(": "), std::string::npos) << "no place, no colon: " << reason;
    EXPECT_EQ(Win32Error("GetClientRect", 2).what(), "GetClientRect: " + reason);
    EXPECT_LE(std::string(Win32Error(std::string(500, 'x'), 2).what()).size(), 255u);
}

TEST(Scanner, TakesNumbersAsStreamsDo)
{
    const struct { const char* text; bool good; double value; const char* rest; } cases[] = {
        {"1.5.2", true, 1.5, ".2"},   {"+7e1x", true, 70, "x"},   {"1e", false, 0, ""},     {"-", false, 0, ""},
        {"x", false, 0, "x"},         {" \t\n3", true, 3, ""},    {"", false, 9, ""},       {"-.5-3", true, -0.5, "-3"},
        {"1e400", false, std::numeric_limits<double>::max(), ""}, {"-1e400", false, -std::numeric_limits<double>::max(), ""},
        {"1e-400", true, 0, ""},      {"0x10", true, 0, "x10"},   {"inf", false, 0, "inf"}, {"1e+", false, 0, ""},
        {"123456789012345678901234567890", true, 123456789012345678901234567890.0, ""},
        {"0.1000000000000000055511151231257827", true, 0.1, ""},  {"9007199254740993", true, 9007199254740992.0, ""},
        {"4.35", true, 4.35, ""},     {"1e22", true, 1e22, ""},   {"1e23", true, 1e23, ""}, {"-0", true, -0.0, ""},
    };
    for (const auto& c : cases) {
        Scanner<> scanner{std::string_view(c.text)};
        double value = 9;
        EXPECT_EQ(scanner.real(value), c.good) << c.text;
        EXPECT_EQ(value, c.value) << c.text;
        EXPECT_EQ(std::string_view(scanner.position(), static_cast<std::size_t>(scanner.end() - scanner.position())), c.rest) << c.text;
        EXPECT_EQ(scanner.failed(), !c.good);
    }
}

}   // namespace belvor
