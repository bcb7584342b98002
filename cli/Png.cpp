#include "cli/Png.h"

#include <algorithm>

namespace belvor {

PngPicture::PngPicture(OutputFile& output, int width, int height)
    : file(output, static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height))
{}

void PngPicture::writeRow(const Buffer& row)
{
    std::uint8_t* pixel = file.row().data();
    for (const std::uint32_t owner : row.owners()) {
        const std::uint8_t* const colour = owner == Buffer::noFacet ? row.background() : row.colour(owner);
        pixel = std::copy(colour, colour + 3, pixel);
    }
    file.writeRow();
}

}   // namespace belvor
