#include "imagefile/PngFile.h"

#include "tests/support/Files.h"

#include <gtest/gtest.h>

#include <random>

using namespace belvor;

// What the pixels are is tests/picture/'s.
TEST(PngFile, FlatRowsTakeLittleSpaceAndNoiseLittleMoreThanItself)
{
    constexpr std::uint32_t width = 40, height = 3000, thirds = height / 3;
    const test::TempFile target("rows.png");
    OutputFile output(target.path());
    PngFile file(output, width, height);
    std::minstd_rand noise;
    for (std::uint32_t y = 0; y < height; ++y) {
        for (auto& byte : file.row())
            byte = static_cast<std::uint8_t>(y / thirds == 1 ? noise() >> 8 : y / thirds);
        file.writeRow();
    }
    file.finishPixels();
    file.finish();
    output.commit();
    const std::size_t ofNoise = std::size_t{thirds} * 3 * width, size = target.bytes().size();
    EXPECT_GT(size, ofNoise);
    EXPECT_LT(size, ofNoise + ofNoise / 20) << "flat rows cost nearly nothing";
}
