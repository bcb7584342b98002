#include "imagefile/Deflater.h"

#include "imagefile/ZlibMemory.h"

#include <new>

namespace belvor {

struct Deflater::Stream {
    explicit Stream(int level)
    {
        takeMemoryFromHere(zlib);
        if (deflateInit2(&zlib, level, Z_DEFLATED, 15, 8, Z_DEFAULT_STRATEGY) != Z_OK) throw std::bad_alloc();
    }
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;
    ~Stream() { deflateEnd(&zlib); }
    z_stream zlib{};
};

Deflater::Deflater(int level, std::size_t maxBytes)
    : stream(std::make_unique<Stream>(level)),
      packed(deflateBound(&stream->zlib, static_cast<uLong>(maxBytes)))
{}

Deflater::~Deflater() = default;

std::span<const std::uint8_t> Deflater::pack(std::span<const std::uint8_t> block)
{
    z_stream& zlib = stream->zlib;
    deflateReset(&zlib);
    zlib.next_in = const_cast<std::uint8_t*>(block.data());   // not written to
    zlib.avail_in = static_cast<uInt>(block.size());
    zlib.next_out = packed.data();
    zlib.avail_out = static_cast<uInt>(packed.size());
    deflate(&zlib, Z_FINISH);   // there is room for any block
    return std::span(packed).first(packed.size() - zlib.avail_out);
}

}   // namespace belvor
