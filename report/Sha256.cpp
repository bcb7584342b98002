#include "report/Sha256.h"

#include "calcore/BigEndian.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace belvor {
namespace {

constexpr std::uint32_t roundConstants[64] = {
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};

/// The 64 words that a block of 16 becomes.
std::array<std::uint32_t, 64> scheduleOf(const unsigned char* block) noexcept
{
    std::array<std::uint32_t, 64> words;
    for (std::size_t i = 0; i < 16; ++i) words[i] = readBigEndian(block + 4 * i);
    for (std::size_t i = 16; i < 64; ++i) {
        const std::uint32_t early = words[i - 15], late = words[i - 2];
        words[i] = words[i - 16] + words[i - 7] + (std::rotr(early, 7) ^ std::rotr(early, 18) ^ (early >> 3))
                   + (std::rotr(late, 17) ^ std::rotr(late, 19) ^ (late >> 10));
    }
    return words;
}

}   // namespace

void Sha256::takeBlock(const unsigned char* block) noexcept
{
    const std::array<std::uint32_t, 64> words = scheduleOf(block);
    auto [a, b, c, d, e, f, g, h] = state;
    for (std::size_t i = 0; i < 64; ++i) {
        const std::uint32_t choice = (e & f) ^ (~e & g), majority = (a & b) ^ (a & c) ^ (b & c);
        const std::uint32_t first = h + (std::rotr(e, 6) ^ std::rotr(e, 11) ^ std::rotr(e, 25)) + choice
                                    + roundConstants[i] + words[i];
        const std::uint32_t second = (std::rotr(a, 2) ^ std::rotr(a, 13) ^ std::rotr(a, 22)) + majority;
        h = g;
        g = f;
        f = e;
        e = d + first;
        d = c;
        c = b;
        b = a;
        a = first + second;
    }
    const std::uint32_t added[8] = {a, b, c, d, e, f, g, h};
    for (std::size_t i = 0; i < 8; ++i) state[i] += added[i];
}

void Sha256::add(std::string_view bytes) noexcept
{
    byteCount += bytes.size();
    while (!bytes.empty()) {
        if (restSize == 0 && bytes.size() >= blockSize) {   // straight from the piece, without a copy
            takeBlock(reinterpret_cast<const unsigned char*>(bytes.data()));
            bytes.remove_prefix(blockSize);
            continue;
        }
        const std::size_t taken = std::min(bytes.size(), blockSize - restSize);
        std::memcpy(rest.data() + restSize, bytes.data(), taken);
        restSize += taken;
        bytes.remove_prefix(taken);
        if (restSize < blockSize) continue;
        takeBlock(rest.data());
        restSize = 0;
    }
}

std::string Sha256::hexDigest()
{
    const std::uint64_t bitCount = byteCount * 8;
    unsigned char end[blockSize + 8] = {0x80};   // the end mark and zeros, then the length
    const std::size_t padding = (restSize < 56 ? 56 : 120) - restSize;
    for (std::size_t i = 0; i < 8; ++i)
        end[padding + i] = static_cast<unsigned char>(bitCount >> (56 - 8 * i));
    add({reinterpret_cast<const char*>(end), padding + 8});

    std::string digest;
    for (const std::uint32_t word : state)
        for (int shift = 28; shift >= 0; shift -= 4) digest += "0123456789abcdef"[(word >> shift) & 0xF];
    return digest;
}

std::string sha256Of(std::string_view bytes)
{
    Sha256 digest;
    digest.add(bytes);
    return digest.hexDigest();
}

}   // namespace belvor
