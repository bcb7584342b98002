#pragma once

#include "imagefile/ImageWriter.h"

#include <string>
#include <vector>

namespace belvor {

/// A picture as an array of records for numpy: shape (height, width), fields colour (3 x u1), code (u4),
/// distance (f8) and material (u2).
class NpyFile : public PlainImageWriter {
public:
    /// Throws FileError, std::bad_alloc.
    NpyFile(OutputFile& output, const ImageHeader& header);
    ImageRow row() noexcept override { return {rgb, depth, material}; }
    void writeRow() override;

private:
    std::vector<std::uint8_t> rgb;
    std::vector<std::uint32_t> depth;
    std::vector<std::uint16_t> material;
    std::vector<char> records;
};

}   // namespace belvor
