#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace belvor {

/// Packs blocks of bytes with zlib, each into a stream of its own. The same bytes on every system. Used by
/// one thread at a time.
class Deflater {
public:
    /// For blocks of at most `maxBytes`, at zlib's level 1 to 9. Throws std::bad_alloc.
    Deflater(int level, std::size_t maxBytes);
    ~Deflater();

    /// The packed block, until the next call.
    std::span<const std::uint8_t> pack(std::span<const std::uint8_t> block);

private:
    struct Stream;
    std::unique_ptr<Stream> stream;
    std::vector<std::uint8_t> packed;
};

}   // namespace belvor
