#pragma once

#include "imagefile/Cryptomatte.h"
#include "imagefile/Deflater.h"
#include "imagefile/ImageWriter.h"
#include "imagefile/SeekableOutput.h"

#include <array>
#include <vector>

namespace belvor {

/// A picture as an EXR file: colour, distance, depth code, material number and Cryptomatte, packed in
/// blocks of 16 rows.
class ExrFile : public ImageWriter {
public:
    /// Throws FileError, std::bad_alloc.
    ExrFile(OutputFile& output, const ImageHeader& header);
    ImageRow row() noexcept override { return {rgb, depth, material}; }
    void writeRow() override;
    void finish() override;

private:
    void addRow(std::uint8_t* to) const;
    void writeBlock();

    SeekableOutput output;
    const DepthScale scale;
    const Cryptomatte matte;
    const int height;
    std::array<std::uint16_t, 256> halves;   // of a colour's bytes
    std::vector<std::uint8_t> rgb;
    std::vector<std::uint32_t> depth;
    std::vector<std::uint16_t> material;
    const std::size_t rowBytes;
    std::vector<std::uint8_t> block, reordered;
    Deflater deflater;
    int rowsDone = 0, rowsInBlock = 0;
    long long tableAt = 0, position = 0;   // in the file
    std::vector<std::uint64_t> blockStarts;
};

}   // namespace belvor
