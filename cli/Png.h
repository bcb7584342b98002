#pragma once

#include "cli/Pictures.h"

namespace belvor {

/// The colour picture as a PNG file. Keeps the picture in memory until it is whole.
class PngPicture : public Picture {
public:
    /// Writes into `output`, which must outlive this object.
    PngPicture(OutputFile& output, int width, int height);
    void writeRow(const Buffer& row) override;
    void finish() override;

private:
    OutputFile& output;
    int width, height;
    std::vector<std::uint8_t> rgb;
};

}   // namespace belvor
