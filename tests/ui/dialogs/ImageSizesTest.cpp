#include "ui/dialogs/ImageSizes.h"

#include <gtest/gtest.h>

namespace belvor {

TEST(ImageSizes, AChangeInOnePartMovesTheOthers)
{
    using Number = std::optional<std::uint32_t>;
    const struct {
        const char* why;
        PixelCounts asked, shown;
        Number width, height;
        int button;
        Number kilobytes;
    } cases[] = {
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
    for (const auto& c : cases) {
        const SizeUpdate update = updateSize(c.asked, c.shown);
        EXPECT_EQ(update.newWidth, c.width) << c.why;
        EXPECT_EQ(update.newHeight, c.height) << c.why;
        EXPECT_EQ(update.button, c.button) << c.why;
        EXPECT_EQ(update.kilobytes, c.kilobytes) << c.why;
    }
}

}   // namespace belvor
