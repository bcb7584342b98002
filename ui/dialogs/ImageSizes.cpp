#include "ui/dialogs/ImageSizes.h"

#include <algorithm>
#include <iterator>

namespace belvor {
namespace {

constexpr PixelCounts presets[sizePresets] = {{640, 480},  {800, 600},   {1024, 768},
                                              {1152, 864}, {1280, 1024}, {1600, 1200}};

std::optional<std::uint32_t> toWrite(std::uint32_t value, std::uint32_t shown) noexcept
{
    if (value == 0 || value == shown) return std::nullopt;
    return value;
}

}   // namespace

PixelCounts presetSize(int preset) noexcept { return presets[preset]; }

int presetOf(const PixelCounts& size) noexcept
{
    return static_cast<int>(std::find(std::begin(presets), std::end(presets), size) - std::begin(presets));
}

std::uint32_t diskSpaceKB(const PixelCounts& size) noexcept
{
    return ((9u * size.width + 12u) * size.height + 5000u) >> 10;
}

SizeUpdate updateSize(const PixelCounts& asked, const PixelCounts& shown) noexcept
{
    const PixelCounts size{asked.width != 0 ? asked.width : shown.width,
                           asked.height != 0 ? asked.height : shown.height};
    SizeUpdate update{toWrite(size.width, shown.width), toWrite(size.height, shown.height), presetOf(size),
                      std::nullopt};
    if (size.width != 0 && size.height != 0) update.kilobytes = diskSpaceKB(size);
    return update;
}

}   // namespace belvor
