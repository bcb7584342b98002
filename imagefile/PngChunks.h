#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace belvor {

/// The chunks of a PNG file, one after another. Used by one thread at a time.
class PngChunks {
public:
    /// `file` stands at its start, stays open and is not owned.
    explicit PngChunks(std::FILE* file);

    /// Begins the next chunk, behind the data of the one before. False at the end of the file, and where it
    /// is no PNG file, breaks off, or has a wrong checksum.
    bool next();
    bool is(std::string_view type) const noexcept { return std::string_view(name.data(), 4) == type; }
    /// Reads up to `most` bytes of the chunk's data; 0 behind the last one.
    std::size_t read(void* into, std::size_t most);
    /// What is left of the data, if that is at most `most` bytes.
    std::string rest(std::size_t most);
    /// Whether the last chunk was IEND, whole, and nothing follows it.
    bool complete();

private:
    void end();
    bool readAll(void* into, std::size_t count);

    std::FILE* const file;
    std::array<char, 4> name{};
    std::uint32_t left = 0;    // bytes of data
    unsigned long check = 0;   // of type and data so far
    bool good = false, begun = false;
};

/// What a PNG file tells besides its pixels.
struct PngAccount {
    std::uint32_t width = 0, height = 0;
    bool plain = false;                         ///< 8-bit red, green and blue, not interlaced.
    std::map<std::string, std::string> texts;   ///< By keyword; not packed ones of no language.
};

/// Reads a PNG file through; none of a file that is not whole. Throws std::bad_alloc.
std::optional<PngAccount> readPngAccount(std::FILE* file);

}   // namespace belvor
