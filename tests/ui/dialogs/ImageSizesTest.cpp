#include "ui/dialogs/ImageSizes.h"

#include <gtest/gtest.h>

using namespace belvor;

TEST(ImageSizes, AChangeOfOneControlUpdatesTheOthers)
{
    using Number = std::optional<std::uint32_t>;
    // Columns: why, asked, shown, width, height, button, kilobytes.
    const std::tuple<const char*, PixelCounts, PixelCounts, Number, Number, int, Number> cases[] = {
        {"opened: both fields empty", {800, 600}, {0, 0}, 800, 600, 1, 4230},
        {"a preset over other numbers", {640, 480}, {800, 600}, 640, 480, 0, 2710},
        {"a preset that shares the height", {1024, 768}, {10, 768}, 1024, {}, 2, 6925},
        {"the other presets", {1152, 864}, {1, 1}, 1152, 864, 3, 8763},
        {"", {1280, 1024}, {1, 1}, 1280, 1024, 4, 11536},
        {"", {1600, 1200}, {1, 1}, 1600, 1200, 5, 16893},
        {"800 typed beside 600: the typed field is left alone", {800, 0}, {800, 600}, {}, {}, 1, 4230},
        {"typing on the way to 800", {80, 0}, {80, 600}, {}, {}, sizePresets, 433},
        {"a preset on its side is none", {600, 0}, {600, 800}, {}, {}, sizePresets, 4233},
        {"counted in 32 bits", {65535, 65535}, {65535, 1}, {}, 65535, sizePresets, 4193924},
        {"the width emptied", {0, 0}, {0, 600}, {}, {}, sizePresets, {}},
        {"the height emptied", {0, 0}, {800, 0}, {}, {}, sizePresets, {}},
    };
    for (const auto& [why, asked, shown, width, height, button, kilobytes] : cases) {
        const SizeUpdate update = updateSize(asked, shown);
        EXPECT_EQ(std::tie(update.newWidth, update.newHeight, update.button, update.kilobytes),
                  std::tie(width, height, button, kilobytes))
            << why;
    }
}
