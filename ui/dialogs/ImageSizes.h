#pragma once

#include <cstdint>
#include <optional>

namespace belvor {

/// A width and a height in pixels as the Image Size dialog holds them; 0 is an empty field.
struct PixelCounts {
    std::uint32_t width = 0, height = 0;
    friend bool operator==(const PixelCounts&, const PixelCounts&) noexcept = default;
};

inline constexpr int sizePresets = 6;
/// The size that preset button `preset` stands for, 0 to sizePresets − 1.
PixelCounts presetSize(int preset) noexcept;
/// The preset of that size; sizePresets, the button "Other", for any other size.
int presetOf(const PixelCounts& size) noexcept;

/// What an uncompressed image file takes, in KB: nine bytes a pixel, twelve a row and some
/// for the directories. In 32 bits, so beyond about 477 million pixels it is too small.
std::uint32_t diskSpaceKB(const PixelCounts& size) noexcept;

/// How the dialog is to change when one of its parts has changed.
struct SizeUpdate {
    std::optional<std::uint32_t> newWidth, newHeight;   ///< To write into the fields.
    int button = sizePresets;                           ///< The one to check, from 0.
    std::optional<std::uint32_t> kilobytes;             ///< To show, unless a field is empty.
};

/// The rule behind the fields: `asked` is what a button or a field says, 0 for what it says
/// nothing of, `shown` the numbers the fields hold. A field that already holds its number is
/// not written, so that typing is left alone.
SizeUpdate updateSize(const PixelCounts& asked, const PixelCounts& shown) noexcept;

}   // namespace belvor
