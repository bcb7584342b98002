#include "imagefile/PictureTextReader.h"

#include "imagefile/ByteSource.h"
#include "imagefile/ExrHeader.h"
#include "imagefile/PictureFormat.h"
#include "imagefile/PngChunks.h"
#include "platform/FileError.h"
#include "platform/Files.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string_view>

namespace belvor {
namespace {

constexpr std::uint64_t maxPictureText = 64 << 20;

/// A file read from its start on, number by number. What lies outside the file is zero, and told by `good`.
class Bytes {
public:
    explicit Bytes(const std::string& path) : source(path) {}

    template <class T>
    T number()
    {
        T value{};
        if (need(sizeof value)) source.read(at, &value, sizeof value);
        at += sizeof value;
        return value;
    }
    std::string text(std::uint64_t count)
    {
        if (count > maxPictureText || !need(count)) return {};
        std::string bytes(static_cast<std::size_t>(count), '\0');
        source.read(at, bytes.data(), bytes.size());
        at += count;
        return bytes;
    }
    /// Up to a zero byte, of at most 255 letters.
    std::string name()
    {
        std::string letters;
        while (letters.size() < 256) {
            const char letter = number<char>();
            if (letter == '\0' || !good) break;
            letters += letter;
        }
        return letters;
    }
    std::uint64_t size() const noexcept { return source.size(); }

    std::uint64_t at = 0;
    bool good = true;

private:
    bool need(std::uint64_t count)
    {
        good = good && at <= source.size() && count <= source.size() - at;
        return good;
    }
    FileSource source;
};

/// The hash at the end of the JSON text that describes a picture, whose quotes are written as `quote`.
std::optional<std::string> hashInText(std::string_view json, std::string_view quote)
{
    constexpr std::size_t length = 64;
    std::string before, after;
    before.append(quote).append("hash").append(quote).append(":").append(quote);
    after.append(quote).append("}");
    if (!json.ends_with(after) || json.size() < before.size() + length + after.size()) return {};
    json.remove_suffix(after.size());
    const std::string_view hash = json.substr(json.size() - length);
    json.remove_suffix(length);
    if (!json.ends_with(before) || hash.find_first_not_of("0123456789abcdef") != hash.npos) return {};
    return std::string(hash);
}

std::optional<std::string> hashInPng(const std::string& path)
{
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(openFile(path, "rb"), std::fclose);
    const std::optional<PngAccount> about = file ? readPngAccount(file.get()) : std::nullopt;
    if (!about) return {};
    const auto found = about->texts.find("Belvor hash");
    return found == about->texts.end() ? std::nullopt : std::optional(found->second);
}

/// The blocks of rows fill the file to its end, each where the table says.
bool blocksAreWhole(Bytes& file, std::uint64_t height)
{
    const std::uint64_t count = (height + exrRowsPerBlock - 1) / exrRowsPerBlock, table = file.at;
    std::uint64_t next = table + 8 * count;
    for (std::uint64_t i = 0; i < count && file.good; ++i) {
        file.at = table + 8 * i;
        if (file.number<std::uint64_t>() != next) return false;
        file.at = next + 4;
        next += 8 + file.number<std::uint32_t>();
    }
    return file.good && next == file.size();
}

std::optional<std::string> hashInExr(Bytes file)
{
    std::string json;
    std::uint64_t height = 0;
    if (file.number<std::uint32_t>() != exrMagic || file.number<std::uint32_t>() != exrVersion) return {};
    for (std::string name = file.name(); !name.empty(); name = file.name()) {
        file.name();   // the type
        const std::uint32_t size = file.number<std::uint32_t>();
        const std::uint64_t end = file.at + size;
        if (name == "belvor") json = file.text(size);
        if (name == "dataWindow") {
            file.at += 12;
            height = std::uint64_t{file.number<std::uint32_t>()} + 1;
        }
        file.at = end;
        if (!file.good) return {};
    }
    return blocksAreWhole(file, height) ? hashInText(json, "\"") : std::nullopt;
}

/// A TIFF file as TiffFile writes it: the colour's directory first, the rows last.
std::optional<std::string> hashInTiff(Bytes file)
{
    const bool big = file.number<std::uint32_t>() == 0x002B4949;
    const auto offset = [&] { return big ? file.number<std::uint64_t>() : file.number<std::uint32_t>(); };
    file.at = big ? 8 : 4;
    file.at = offset();
    std::uint64_t entries = big ? file.number<std::uint64_t>() : file.number<std::uint16_t>();
    std::uint64_t width = 0, height = 0, rows = 0;
    std::string json;
    for (; entries > 0 && file.good; --entries) {
        const auto tag = file.number<std::uint16_t>();
        file.at += 2;
        const std::uint64_t count = offset(), next = file.at + (big ? 8 : 4);
        const std::uint64_t value = offset();
        if (tag == 256) width = value;
        if (tag == 257) height = value;
        file.at = value;
        if (tag == 270 && count > 0) json = file.text(count - 1);
        if (tag == 273) rows = height == 1 ? value : offset();
        file.at = next;
    }
    const std::uint64_t end = rows - 6 * width + (9 * width + 3) / 4 * 4 * height;
    return file.good && end == file.size() ? hashInText(json, "\"") : std::nullopt;
}

std::optional<std::string> hashInSvg(const std::string& path)
{
    constexpr std::string_view begin = "<metadata>", end = "</metadata>";
    std::string bytes;
    if (!readWholeFile(path, bytes) || !bytes.ends_with("</svg>\n")) return {};
    const std::size_t first = bytes.find(begin), last = bytes.find(end);
    if (first == bytes.npos || last == bytes.npos || last < first) return {};
    return hashInText(std::string_view(bytes).substr(first, last - first), "&quot;");
}

}   // namespace

std::optional<std::string> hashInPicture(const std::string& path)
try {
    switch (pictureFormatOfPath(path).value_or(PictureFormat::ombr)) {
    case PictureFormat::png: return hashInPng(path);
    case PictureFormat::exr: return hashInExr(Bytes(path));
    case PictureFormat::tiff: return hashInTiff(Bytes(path));
    case PictureFormat::svg: return hashInSvg(path);
    default: return {};
    }
} catch (const FileError&) {
    return {};
}

}   // namespace belvor
