#pragma once

#include "imagefile/PngChunks.h"

#include <memory>
#include <span>
#include <string>
#include <vector>

namespace belvor {

/// Reads the rows of a PNG file that PngFile has written. Used by one thread at a time.
class PngReader {
public:
    /// Reads the file (UTF-8 name) through once. Throws FileError: also for a file that is not whole, or not
    /// of 8-bit red, green and blue; std::bad_alloc.
    explicit PngReader(const std::string& path);
    ~PngReader();

    const PngAccount& about() const noexcept { return account; }

    /// Reads the next row, from the top: red, green and blue of each pixel, until the next call. Throws
    /// FileError.
    std::span<const std::uint8_t> readRow();

private:
    struct Unpacker;
    [[noreturn]] void fail() const;

    const std::string name;
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file;
    PngAccount account;
    std::unique_ptr<Unpacker> unpacker;
    std::vector<std::uint8_t> current, above;   // the filter's number, then the pixels
};

}   // namespace belvor
