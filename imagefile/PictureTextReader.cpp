#include "imagefile/PictureTextReader.h"

#include "imagefile/PictureFormat.h"
#include "platform/Files.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string_view>

namespace belvor {
namespace {

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

std::uint32_t bigEndian(const unsigned char* bytes) noexcept
{
    return std::uint32_t{bytes[0]} << 24 | std::uint32_t{bytes[1]} << 16 | std::uint32_t{bytes[2]} << 8
           | bytes[3];
}

bool readAll(std::FILE* file, void* into, std::size_t count)
{
    return std::fread(into, 1, count, file) == count;
}

/// One chunk of a PNG file; of a text its data.
struct Chunk {
    std::array<char, 4> type{};
    std::string data;

    bool is(std::string_view name) const noexcept { return std::string_view(type.data(), 4) == name; }
    /// False at the end of the file and for a chunk whose checksum is wrong.
    bool read(std::FILE* file)
    {
        constexpr std::uint32_t longestText = 1 << 20;
        unsigned char start[8], end[4], block[16384];
        if (!readAll(file, start, sizeof start)) return false;
        std::uint32_t rest = bigEndian(start);
        std::memcpy(type.data(), start + 4, 4);
        const bool keep = is("iTXt") && rest <= longestText;
        data.clear();
        uLong check = crc32(0, start + 4, 4);
        while (rest > 0) {
            const std::uint32_t count = std::min<std::uint32_t>(rest, sizeof block);
            if (!readAll(file, block, count)) return false;
            check = crc32(check, block, count);
            if (keep) data.append(reinterpret_cast<const char*>(block), count);
            rest -= count;
        }
        return readAll(file, end, sizeof end) && bigEndian(end) == static_cast<std::uint32_t>(check);
    }
};

std::optional<std::string> hashInPng(std::FILE* file)
{
    constexpr std::string_view signature = "\x89PNG\r\n\x1A\n";
    constexpr std::string_view keyword("Belvor hash\0\0\0\0\0", 16);
    char start[8];
    if (!readAll(file, start, sizeof start) || std::string_view(start, sizeof start) != signature) return {};
    std::optional<std::string> hash;
    for (Chunk chunk; chunk.read(file);) {
        if (chunk.is("iTXt") && chunk.data.starts_with(keyword)) hash = chunk.data.substr(keyword.size());
        if (chunk.is("IEND")) return std::fgetc(file) == EOF ? hash : std::nullopt;
    }
    return {};
}

}   // namespace

std::optional<std::string> hashInPicture(const std::string& path)
{
    if (pictureFormatOfPath(path) != PictureFormat::png) return {};
    const File file(openFile(path, "rb"), std::fclose);
    return file ? hashInPng(file.get()) : std::nullopt;
}

}   // namespace belvor
