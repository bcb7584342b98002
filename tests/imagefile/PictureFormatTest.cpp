#include "imagefile/PictureFormat.h"

#include "imagefile/Cryptomatte.h"
#include "imagefile/PictureGeometry.h"
#include "tests/support/Models.h"
#include "text/JsonText.h"

#include <gtest/gtest.h>

using namespace belvor;

TEST(PictureFormat, FollowsFromTheExtensionInAnyCase)
{
    const std::tuple<const char*, std::optional<PictureFormat>> cases[] = {
        {"a.omb", PictureFormat::ombr}, {"a.PNG", PictureFormat::png},    {"a.b.exr", PictureFormat::exr},
        {"a.Tif", PictureFormat::tiff}, {"x/.tiff", PictureFormat::tiff}, {"a.npy", PictureFormat::npy},
        {"a.pfm", PictureFormat::pfm},
    };
    for (const auto& [path, format] : cases) EXPECT_EQ(pictureFormatOfPath(path), format) << path;
    for (const char* const path : {"a.png.", "png", "a.pngx", "", "a.png/b"})
        EXPECT_EQ(pictureFormatOfPath(path), std::nullopt) << path;
    EXPECT_EQ(pictureFormatNamed("EXR"), PictureFormat::exr);
    EXPECT_EQ(pictureFormatNamed(".exr"), std::nullopt);
}

TEST(Cryptomatte, NumbersAreThePublishedHashChangedToFiniteFloats)
{
    EXPECT_EQ(Cryptomatte::idOfName("hello"), 0x248BFA47u);
    EXPECT_EQ(Cryptomatte::idOfName("hello, world"), 0x149BBB7Fu);
    EXPECT_EQ(Cryptomatte::idOfName("The quick brown fox jumps over the lazy dog"), 0x2E4FF723u);
    EXPECT_EQ(Cryptomatte::idOfName(""), 0x00800000u) << "hash 0 would be no material";
    const Cryptomatte matte({{7, {}, "Gr\xC3\xBCn"}, {9, {}, "a\"b"}, {11, {}, "a\"b"}});
    EXPECT_EQ(matte.idOf(9), matte.idOf(11));
    EXPECT_EQ(matte.idOf(8), 0u);
    EXPECT_EQ(matte.manifest().substr(0, 9), "{\"Gr\xC3\xBCn\":");
    EXPECT_EQ(matte.manifest().find("a\\\"b", matte.manifest().find("a\\\"b") + 1), std::string::npos);
}

TEST(JsonText, EscapesControlCharactersAndWritesShortestNumbers)
{
    JsonText json;
    json.beginObject().key("a").value("\"\\\n\x01\xC3\xA4\xF0\x9D\x84\x9E\xFF").key("b").beginList();
    json.value(0.1).value(1e300 * 1e300).value(3).value(true).endList().key("c").null().endObject();
    EXPECT_EQ(json.text(), "{\"a\":\"\\\"\\\\\\n\\u0001\\u00e4\\ud834\\udd1e\\ufffd\","
                           "\"b\":[0.1,null,3,true],\"c\":null}");
}

/// A point times a matrix, divided by w.
Point<3> transformed(const Point<3>& p, const PictureGeometry::Matrix& matrix)
{
    double sums[4];
    for (std::size_t column = 0; column < 4; ++column)
        sums[column] = p[0] * matrix[0][column] + p[1] * matrix[1][column] + p[2] * matrix[2][column]
                       + matrix[3][column];
    return {sums[0] / sums[3], sums[1] / sums[3], sums[2] / sums[3]};
}

TEST(PictureGeometry, PixelsAndPointsCorrespondAsInTheCamera)
{
    const ImageSize sizes[] = {{40, 30}, {30, 40}, {1, 9}, {9, 1}};
    for (const bool parallel : {false, true})
        for (const auto& [width, height] : sizes) {
            const CameraView view{static_cast<std::uint32_t>(width),
                                  static_cast<std::uint32_t>(height),
                                  {3, -4, 5},
                                  30,
                                  -20,
                                  0.7,
                                  0.5,
                                  {0, 0, 1},
                                  2};
            Handle<Camera> camera;
            if (parallel) camera = makeHandle<ParallelCamera>(view);
            else camera = makeHandle<PerspectiveCamera>(view);
            const PictureGeometry geometry(camera->describe(), width, height);
            for (const double distance : {camera->near, camera->far}) {
                const Point<3> p = geometry.point(7, 5, distance);
                const Point<3> screen = camera->project(p);
                EXPECT_NEAR(screen[0], 7, 1e-9) << parallel << width;
                EXPECT_NEAR(screen[1], 5, 1e-9) << parallel << width;
                const Point<3> seen = transformed(p, geometry.worldToCamera());
                EXPECT_NEAR(seen[2], distance, 1e-9) << parallel;
                EXPECT_NEAR(dot(camera->frame.right, p - camera->eye), seen[0], 1e-9) << parallel;
                const Point<3> inPicture = transformed(p, geometry.worldToPicture());
                EXPECT_NEAR(inPicture[0] * width, 7.5, 1e-9) << parallel << width;
                EXPECT_NEAR(inPicture[1] * height, 5.5, 1e-9) << parallel << width;
            }
        }
}
