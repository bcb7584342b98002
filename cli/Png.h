#pragma once

#include "cli/Pictures.h"

namespace belvor {

/// The colour picture as a PNG file. Keeps the picture in memory until it is whole.
class PngPicture : public Picture {
public:
    /// Opens the file (`path` is UTF-8). Throws OmbrFile::Error.
    PngPicture(const std::string& path, int width, int height);
    ~PngPicture() override;
    void writeRow(const Buffer& row) override;
    void finish() override;

private:
    std::FILE* file;
    int width, height;
    std::vector<std::uint8_t> rgb;
};

}   // namespace belvor
