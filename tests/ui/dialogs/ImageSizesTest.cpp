#include "ui/dialogs/ImageSizes.h"

#include <gtest/gtest.h>

using namespace belvor;

TEST(ImageSizes, AChangeOfOneControlUpdatesTheOthers)
{
    using Number = std::optional<std::uint32_t>;
    // Columns: why, asked, shown, width, height, button, kilobytes.
    const std::tuple<const char*, PixelCounts, PixelCounts, Number, Number, int, Number> cases[] = {
        {"opened: both fields empty", {800, 600}, {0, 0}, 800, 600, 1, 4230},
        {"a preset that shares the height", {1024, 768}, {10, 768}, 1024, {}, 2, 6925},
        {"", {1600, 1200}, {1, 1}, 1600, 1200, 5, 16893},
        {"800 typed beside 600: the typed field is left alone", {800, 0}, {800, 600}, {}, {}, 1, 4230},
        {"a preset on its side is none", {600, 0}, {600, 800}, {}, {}, sizePresets, 4233},
        {"counted in 32 bits", {65535, 65535}, {65535, 1}, {}, 65535, sizePresets, 4193924},
        {"the width emptied", {0, 0}, {0, 600}, {}, {}, sizePresets, {}},
    };
    for (const auto& [why, asked, shown, width, height, button, kilobytes] : cases) {
        const SizeUpdate update = updateSize(asked, shown);
        EXPECT_EQ(std::tie(update.newWidth, update.newHeight, update.button, update.kilobytes),
                  std::tie(width, height, button, kilobytes))
            << why;
    }
}
