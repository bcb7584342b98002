#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace belvor {

/// The SHA-256 digest (FIPS 180-4) of bytes that come in pieces.
class Sha256 {
public:
    /// Takes the next piece, of any size.
    void add(std::string_view bytes) noexcept;

    /// The digest of all pieces: 64 hexadecimal digits in lower case. Ends the object: nothing may be added
    /// any more.
    std::string hexDigest();

private:
    static constexpr std::size_t blockSize = 64;

    void takeBlock(const unsigned char* block) noexcept;

    std::array<std::uint32_t, 8> state{0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                                       0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};
    std::array<unsigned char, blockSize> rest{};   // bytes that do not fill a block yet
    std::size_t restSize = 0;
    std::uint64_t byteCount = 0;
};

/// The same of one piece.
std::string sha256Of(std::string_view bytes);

}   // namespace belvor
