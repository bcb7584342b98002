#include "imagefile/PngFile.h"

#include "tests/support/Files.h"

#include <gtest/gtest.h>

#include <cstddef>

using namespace belvor;

namespace {

constexpr std::uint32_t width = 40, height = 3000;

/// Rows of one colour, of noise, and rows like the one above.
void writePicture(const std::string& path)
{
    OutputFile output(path);
    PngFile file(output, width, height);
    std::uint32_t noise = 1;
    for (std::uint32_t y = 0; y < height; ++y) {
        const auto row = file.row();
        for (std::uint8_t& byte : row) {
            if (y / 1000 == 1) noise = noise * 1664525u + 1013904223u;
            byte = static_cast<std::uint8_t>(y / 1000 == 1 ? noise >> 24 : y / 1000);
        }
        file.writeRow();
    }
    file.finishPixels();
    file.finish();
    output.commit();
}

// What the pixels are is tests/picture/'s.

TEST(PngFile, FlatRowsTakeLittleSpaceAndNoiseLittleMoreThanItself)
{
    const test::TempFile file("rows.png");
    writePicture(file.path());
    const std::size_t noise = 1000 * 3 * width, size = file.bytes().size();
    EXPECT_GT(size, noise);
    EXPECT_LT(size, noise + noise / 20) << "flat rows cost nearly nothing";
}

}   // namespace
