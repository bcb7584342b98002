#include "ui/dialogs/ImageSizes.h"

#include <gtest/gtest.h>

namespace belvor {

TEST(ImageSizes, DiskSpaceIsCountedIn32Bits)
{
    const struct { PixelCounts size; std::uint32_t kilobytes; } cases[] = {
        {{640, 480}, 2710},   {{800, 600}, 4230},    {{1024, 768}, 6925},      {{1152, 864}, 8763},
        {{1280, 1024}, 11536}, {{1600, 1200}, 16893}, {{1, 1}, 4},             {{16383, 16383}, 2359204},
        {{22000, 22000}, 59864}, {{65535, 65535}, 4193924},
    };
    for (const auto& c : cases) EXPECT_EQ(diskSpaceKB(c.size), c.kilobytes) << c.size.width << " x " << c.size.height;
}

TEST(ImageSizes, EveryPresetIsFoundByItsSize)
{
    for (int preset = 0; preset < sizePresets; ++preset) EXPECT_EQ(presetOf(presetSize(preset)), preset);
    EXPECT_EQ(presetOf({600, 800}), sizePresets);
    EXPECT_EQ(presetOf({0, 0}), sizePresets);
}

TEST(ImageSizes, AChangeInOnePartMovesTheOthers)
{
    using Number = std::optional<std::uint32_t>;
    const struct { const char* why; PixelCounts asked, shown; Number width, height; int button; Number kilobytes; } cases[] = {
        {"opened: both fields empty", {800, 600}, {0, 0}, 800, 600, 1, 4230},
        {"a preset over other numbers", {640, 480}, {800, 600}, 640, 480, 0, 2710},
        {"a preset that shares the height", {1024, 768}, {10, 768}, 1024, {}, 2, 6925},
        {"800 typed beside 600: the typed field is left alone", {800, 0}, {800, 600}, {}, {}, 1, 4230},
        {"typing on the way to 800", {80, 0}, {80, 600}, {}, {}, sizePresets, 433},
        {"the height typed", {0, 1200}, {1600, 1200}, {}, {}, 5, 16893},
        {"the width emptied", {0, 0}, {0, 600}, {}, {}, sizePresets, {}},
        {"the height emptied", {0, 0}, {800, 0}, {}, {}, sizePresets, {}},
    };
    for (const auto& c : cases) {
        const SizeUpdate update = updateSize(c.asked, c.shown);
        EXPECT_EQ(update.newWidth, c.width) << c.why;
        EXPECT_EQ(update.newHeight, c.height) << c.why;
        EXPECT_EQ(update.button, c.button) << c.why;
        EXPECT_EQ(update.kilobytes, c.kilobytes) << c.why;
    }
}

}   // namespace belvor
