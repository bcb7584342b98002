#include "imagefile/PngChunks.h"

#include "calcore/BigEndian.h"

#include <zlib.h>

#include <algorithm>
#include <cstring>

namespace belvor {

PngChunks::PngChunks(std::FILE* opened) : file(opened)
{
    constexpr std::string_view signature = "\x89PNG\r\n\x1A\n";
    char start[8];
    good = readAll(start, sizeof start) && std::string_view(start, sizeof start) == signature;
}

bool PngChunks::readAll(void* into, std::size_t count) { return std::fread(into, 1, count, file) == count; }

/// Steps behind the chunk that has begun.
void PngChunks::end()
{
    unsigned char sum[4], passed[16384];
    while (read(passed, sizeof passed) != 0) {}
    good = good && readAll(sum, sizeof sum) && readBigEndian(sum) == static_cast<std::uint32_t>(check);
    begun = false;
}

bool PngChunks::next()
{
    unsigned char start[8];
    if (begun) end();
    begun = good && readAll(start, sizeof start);
    if (!begun) return false;
    left = readBigEndian(start);
    std::memcpy(name.data(), start + 4, name.size());
    check = crc32(0, start + 4, 4);
    return true;
}

std::size_t PngChunks::read(void* into, std::size_t most)
{
    const std::size_t count = good ? std::min<std::size_t>(most, left) : 0;
    if (count == 0) return 0;
    good = readAll(into, count);
    if (!good) return 0;
    check = crc32(check, static_cast<const Bytef*>(into), static_cast<uInt>(count));
    left -= static_cast<std::uint32_t>(count);
    return count;
}

std::string PngChunks::rest(std::size_t most)
{
    if (left > most) return {};
    std::string data(left, '\0');
    data.resize(read(data.data(), data.size()));
    return data;
}

bool PngChunks::complete()
{
    if (!begun || !is("IEND")) return false;
    end();
    return good && std::fgetc(file) == EOF;
}

namespace {

void takeHeader(const std::string& data, PngAccount& about)
{
    constexpr std::string_view plainRgb("\x08\x02\0\0\0", 5);
    if (data.size() != 13) return;
    const auto* const bytes = reinterpret_cast<const unsigned char*>(data.data());
    about.width = readBigEndian(bytes);
    about.height = readBigEndian(bytes + 4);
    about.plain = data.substr(8) == plainRgb;
}

void takeText(const std::string& data, PngAccount& about)
{
    constexpr std::string_view plainInNoLanguage("\0\0\0\0\0", 5);   // its first byte ends the keyword
    const std::size_t end = data.find('\0');
    if (end != data.npos && data.compare(end, plainInNoLanguage.size(), plainInNoLanguage) == 0)
        about.texts[data.substr(0, end)] = data.substr(end + plainInNoLanguage.size());
}

}   // namespace

std::optional<PngAccount> readPngAccount(std::FILE* file)
{
    constexpr std::size_t longestText = 1 << 20;
    PngAccount about;
    PngChunks chunks(file);
    while (chunks.next()) {
        if (chunks.is("IHDR")) takeHeader(chunks.rest(longestText), about);
        if (chunks.is("iTXt")) takeText(chunks.rest(longestText), about);
        if (chunks.is("IEND")) return chunks.complete() ? std::optional(std::move(about)) : std::nullopt;
    }
    return {};
}

}   // namespace belvor
