#pragma once

#include "platform/OutputFile.h"

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string_view>

namespace belvor {

/// An output that is written out of order. Where the output itself takes bytes in their order only, they
/// go to a scratch file first. Used by one thread at a time.
class SeekableOutput {
public:
    /// `output` must outlive this object. Throws FileError.
    explicit SeekableOutput(OutputFile& output);

    /// Appends to what was written last. Throws FileError.
    void write(const void* bytes, std::size_t count);
    void write(std::string_view bytes) { write(bytes.data(), bytes.size()); }
    /// The next byte goes to that position. Throws FileError.
    void seek(long long position);
    /// After the last byte. Throws FileError.
    void finish();

private:
    [[noreturn]] void fail() const;

    OutputFile& output;
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> scratch;   // none: straight into the output
    std::FILE* const file;
};

/// Appends to an output. Throws FileError.
void writeTo(OutputFile& output, const void* bytes, std::size_t count);

}   // namespace belvor
