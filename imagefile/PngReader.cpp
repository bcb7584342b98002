#include "imagefile/PngReader.h"

#include "imagefile/ZlibMemory.h"
#include "platform/FileError.h"
#include "platform/Files.h"

#include <algorithm>
#include <cerrno>
#include <new>
#include <utility>

namespace belvor {

/// The data of all IDAT chunks, unpacked.
struct PngReader::Unpacker {
    explicit Unpacker(std::FILE* file) : chunks(file)
    {
        takeMemoryFromHere(stream);
        if (inflateInit(&stream) != Z_OK) throw std::bad_alloc();
    }
    Unpacker(const Unpacker&) = delete;
    Unpacker& operator=(const Unpacker&) = delete;
    ~Unpacker() { inflateEnd(&stream); }

    /// False when there are not that many.
    bool read(std::span<std::uint8_t> into)
    {
        stream.next_out = into.data();
        stream.avail_out = static_cast<uInt>(into.size());
        while (stream.avail_out != 0) {
            if (stream.avail_in == 0 && !refill()) return false;
            const int status = inflate(&stream, Z_NO_FLUSH);
            if (status == Z_MEM_ERROR) throw std::bad_alloc();
            if (status != Z_OK && !(status == Z_STREAM_END && stream.avail_out == 0)) return false;
        }
        return true;
    }

private:
    bool refill()
    {
        std::size_t count = 0;
        while ((count = chunks.is("IDAT") ? chunks.read(packed, sizeof packed) : 0) == 0)
            if (!chunks.next()) return false;
        stream.next_in = packed;
        stream.avail_in = static_cast<uInt>(count);
        return true;
    }

    PngChunks chunks;
    z_stream stream{};
    std::uint8_t packed[1u << 16];
};

PngReader::PngReader(const std::string& path) : name(path), file(openFile(path, "rb"), std::fclose)
{
    if (!file) throw FileError(path, Text::cannotRead, errno);
    std::optional<PngAccount> found = readPngAccount(file.get());
    if (!found || !found->plain || found->width == 0 || found->width > (1u << 20) || !seekFile(file.get(), 0))
        fail();
    account = std::move(*found);
    unpacker = std::make_unique<Unpacker>(file.get());
    current.resize(1 + std::size_t{3} * account.width);
    above.resize(current.size());
}

PngReader::~PngReader() = default;

void PngReader::fail() const { throw FileError(name, Text::cannotRead, textOf(Text::pngNotReadable)); }

std::span<const std::uint8_t> PngReader::readRow()
{
    constexpr std::uint8_t noFilter = 0, upFilter = 2;
    std::swap(current, above);
    if (!unpacker->read(current) || (current[0] != noFilter && current[0] != upFilter)) fail();
    if (current[0] == upFilter)
        for (std::size_t i = 1; i < current.size(); ++i)
            current[i] = static_cast<std::uint8_t>(current[i] + above[i]);
    return std::span(current).subspan(1);
}

}   // namespace belvor
