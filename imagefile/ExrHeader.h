#pragma once

#include "imagefile/ImageHeader.h"

#include <cstdint>
#include <string>

namespace belvor {

class Cryptomatte;

enum class ExrType : std::uint32_t { uint = 0, half = 1, real = 2 };

/// The channels of a picture, in the order in which a row has them.
struct ExrChannel {
    const char* name;
    ExrType type;
    std::size_t bytes() const noexcept { return type == ExrType::half ? 2 : 4; }
};
inline constexpr ExrChannel exrChannels[] = {
    {"B", ExrType::half},
    {"CryptoMaterial00.A", ExrType::real},
    {"CryptoMaterial00.B", ExrType::real},
    {"CryptoMaterial00.G", ExrType::real},
    {"CryptoMaterial00.R", ExrType::real},
    {"G", ExrType::half},
    {"ID", ExrType::uint},
    {"R", ExrType::half},
    {"Z", ExrType::real},
    {"depth.code", ExrType::uint},
};

inline constexpr std::uint32_t exrMagic = 20000630, exrVersion = 2;
inline constexpr int exrRowsPerBlock = 16;

/// The start of an EXR file up to the table of its blocks.
std::string exrHeader(const ImageHeader& header, const Cryptomatte& matte);

}   // namespace belvor
