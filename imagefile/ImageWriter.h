#pragma once

#include "imagefile/ImageHeader.h"
#include "imagefile/PictureFormat.h"
#include "platform/OutputFile.h"

#include <cstdint>
#include <memory>
#include <span>

namespace belvor {

class Buffer;
class Camera;

/// Room for one row of pixels; parts that its owner does not use are empty.
struct ImageRow {
    std::span<std::uint8_t> rgb;         ///< Red, green, blue of each pixel.
    std::span<std::uint32_t> depth;      ///< Depth codes; noDepthCode where nothing is.
    std::span<std::uint16_t> material;   ///< Material numbers; 0 where nothing is.
};

/// Puts what a finished row of a render holds into the parts of `into` that are not empty.
void fillRow(const Buffer& row, const Camera& camera, const ImageRow& into);

/// Writes one picture file, row by row from the top, with a constant number of rows in memory. The same
/// rows give the same bytes on every system. Used by one thread at a time.
class ImageWriter {
public:
    ImageWriter() = default;
    ImageWriter(const ImageWriter&) = delete;
    ImageWriter& operator=(const ImageWriter&) = delete;
    virtual ~ImageWriter() = default;

    /// The row to write next, to be filled wholly; valid until writeRow().
    virtual ImageRow row() noexcept = 0;
    /// Appends row(). Throws FileError, OmbrFile::Error, std::bad_alloc.
    virtual void writeRow() = 0;
    /// After the last row: completes the file, which its owner commits. Throws as writeRow().
    virtual void finish() = 0;
};

/// A picture whose rows go straight into its file, with distances.
class PlainImageWriter : public ImageWriter {
public:
    void finish() override {}

protected:
    PlainImageWriter(OutputFile& file, const ImageHeader& header) : output(file), scale(header.camera) {}
    OutputFile& output;
    const DepthScale scale;
};

/// Begins a picture in `output`, which must outlive the writer. An output that takes bytes in their order
/// only, as a pipe does, will do. Throws FileError, OmbrFile::Error, std::bad_alloc.
std::unique_ptr<ImageWriter> makeImageWriter(PictureFormat format, OutputFile& output,
                                             const ImageHeader& header);

}   // namespace belvor
