#pragma once

#include "imagefile/ImageWriter.h"
#include "platform/OutputFile.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace belvor {

/// Writes a PNG file of 8-bit red, green and blue, row by row; keeps a few rows in memory. The same
/// rows give the same bytes on every system. Used by one thread at a time.
class PngFile {
public:
    /// Writes the header into `output`, which must outlive this object; its owner commits it. Sizes
    /// in pixels, 1 to 2³¹ − 1. Throws FileError, std::bad_alloc.
    PngFile(OutputFile& output, std::uint32_t width, std::uint32_t height);
    /// Gives the bytes to `sink`, in their order; it throws what this class's functions throw then.
    using Sink = std::function<void(const void* bytes, std::size_t count)>;
    PngFile(Sink sink, std::uint32_t width, std::uint32_t height);
    PngFile(const PngFile&) = delete;
    PngFile& operator=(const PngFile&) = delete;
    ~PngFile();

    /// The row to write next: red, green and blue of each pixel.
    std::span<std::uint8_t> row() noexcept { return std::span(current).subspan(1); }
    /// Appends row(), from the top. Throws FileError.
    void writeRow();
    /// After the last row: completes the pixels. Throws FileError.
    void finishPixels();
    /// Adds a text (UTF-8) under a keyword of 1 to 79 ASCII letters, behind the pixels. Throws
    /// FileError, std::bad_alloc.
    void addText(std::string_view keyword, std::string_view text);
    /// Ends the file. Throws FileError.
    void finish();

private:
    struct Packer;
    void writeChunk(const char (&type)[5], std::span<const std::uint8_t> data);
    void pack(std::span<const std::uint8_t> bytes, bool last);

    const Sink write;
    std::vector<std::uint8_t> current, above, noDifference;   // a filter's number, then the pixels
    std::unique_ptr<Packer> packer;
};

/// The colour of a picture as a PNG file, its texts behind the pixels.
class PngPicture : public ImageWriter {
public:
    /// As PngFile.
    PngPicture(OutputFile& output, const ImageHeader& header);
    ImageRow row() noexcept override { return {file.row(), {}, {}}; }
    void writeRow() override { file.writeRow(); }
    void finish() override;

private:
    PngFile file;
    std::vector<std::pair<const char*, std::string>> texts;   // keyword and text
};

}   // namespace belvor
