#pragma once

#include "imagefile/ImageHeader.h"

#include <cstdint>
#include <string>
#include <vector>

namespace belvor {

/// The matte of a picture's materials as other programs know it: for each material a number made from its
/// name, and a manifest that leads from the names to the numbers.
class Cryptomatte {
public:
    explicit Cryptomatte(const std::vector<ImageMaterial>& materials);

    /// The bits of the float that stands for a material; 0 for number 0 and unknown ones.
    std::uint32_t idOf(std::uint16_t number) const noexcept { return ids[number]; }
    /// {"name":"8 hexadecimal digits of its bits", ...}, UTF-8.
    const std::string& manifest() const noexcept { return names; }

    static constexpr const char* layer = "CryptoMaterial";
    /// What the names of the matte's attributes begin with.
    static std::string attributePrefix();
    /// The number made from a name: MurmurHash3, 32 bits, seed 0, kept from being no finite, normal float.
    static std::uint32_t idOfName(const std::string& name) noexcept;

private:
    std::vector<std::uint32_t> ids;   // by material number
    std::string names;
};

}   // namespace belvor
