#pragma once

#include "imagefile/ImageWriter.h"

#include <vector>

namespace belvor {

/// A picture as a TIFF file of three pages: colour (3 x 8 bits), distance (float) and material (16 bits),
/// not compressed; a BigTIFF file where 32-bit offsets do not reach. The pages' directories stand first.
class TiffFile : public PlainImageWriter {
public:
    /// Throws FileError, std::bad_alloc.
    TiffFile(OutputFile& output, const ImageHeader& header);
    ImageRow row() noexcept override { return {rgb, depth, material}; }
    void writeRow() override;

private:
    std::vector<std::uint8_t> record;   // of a row, as the file has it
    const std::span<float> distances;
    const std::span<std::uint16_t> material;
    const std::span<std::uint8_t> rgb;
    std::vector<std::uint32_t> depth;
};

}   // namespace belvor
