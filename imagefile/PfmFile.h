#pragma once

#include "imagefile/ImageWriter.h"
#include "imagefile/SeekableOutput.h"

#include <vector>

namespace belvor {

/// The distances of a picture as a PFM file: one float a pixel, little-endian, the bottom row first.
class PfmFile : public ImageWriter {
public:
    /// Throws FileError, std::bad_alloc.
    PfmFile(OutputFile& output, const ImageHeader& header);
    ImageRow row() noexcept override { return {{}, depth, {}}; }
    void writeRow() override;
    void finish() override { output.finish(); }

private:
    SeekableOutput output;
    const DepthScale scale;
    std::vector<std::uint32_t> depth;
    std::vector<float> distances;
    long long dataStart, rowsLeft;
};

}   // namespace belvor
