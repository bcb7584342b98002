#include "imagefile/Cryptomatte.h"

#include "text/JsonText.h"
#include "text/Utf8.h"

#include <algorithm>
#include <bit>
#include <set>

namespace belvor {
namespace {

std::uint32_t mixed(std::uint32_t block) noexcept { return std::rotl(block * 0xCC9E2D51u, 15) * 0x1B873593u; }

std::uint32_t murmurHash(const std::string& text) noexcept
{
    const auto byte = [&text](std::size_t i) { return std::uint32_t{static_cast<unsigned char>(text[i])}; };
    std::uint32_t hash = 0;
    std::size_t at = 0;
    for (; at + 4 <= text.size(); at += 4) {
        const std::uint32_t block = byte(at) | byte(at + 1) << 8 | byte(at + 2) << 16 | byte(at + 3) << 24;
        hash = std::rotl(hash ^ mixed(block), 13) * 5 + 0xE6546B64u;
    }
    std::uint32_t rest = 0;
    for (std::size_t i = text.size(); i-- > at;) rest = rest << 8 | byte(i);
    hash ^= mixed(rest) ^ static_cast<std::uint32_t>(text.size());
    hash = (hash ^ hash >> 16) * 0x85EBCA6Bu;
    hash = (hash ^ hash >> 13) * 0xC2B2AE35u;
    return hash ^ hash >> 16;
}

std::string hexadecimal(std::uint32_t number)
{
    std::string digits;
    for (int shift = 28; shift >= 0; shift -= 4) digits += "0123456789abcdef"[number >> shift & 0xF];
    return digits;
}

}   // namespace

std::uint32_t Cryptomatte::idOfName(const std::string& name) noexcept
{
    const std::uint32_t hash = murmurHash(name);
    const std::uint32_t exponent = std::clamp(hash >> 23 & 0xFFu, 1u, 254u);
    return (hash & 0x807FFFFFu) | exponent << 23;
}

std::string Cryptomatte::attributePrefix()
{
    return "cryptomatte/" + hexadecimal(murmurHash(layer)).substr(0, 7) + '/';
}

Cryptomatte::Cryptomatte(const std::vector<ImageMaterial>& materials) : ids(65536)
{
    JsonText json(JsonText::Letters::utf8);
    std::set<std::string> written;
    json.beginObject();
    for (const ImageMaterial& material : materials) {
        const std::string name = validUtf8(material.name);
        ids[material.number] = idOfName(name);
        if (written.insert(name).second) json.key(name).value(hexadecimal(idOfName(name)));
    }
    names = json.endObject().text();
}

}   // namespace belvor
