#pragma once

#include "cli/Pictures.h"
#include "imagefile/PngFile.h"

namespace belvor {

/// The colour picture as a PNG file.
class PngPicture : public Picture {
public:
    /// Writes into `output`, which must outlive this object. Throws OutputFile::Error.
    PngPicture(OutputFile& output, int width, int height);
    void writeRow(const Buffer& row) override;
    void finish() override { file.finish(); }

private:
    PngFile file;
};

}   // namespace belvor
