#include "readers/Gzip.h"

#include "errors/BadFile.h"
#include "resources/Texts.h"

#include <zlib.h>

#include <algorithm>
#include <cstdint>
#include <new>

namespace belvor {
namespace {

constexpr std::uint64_t mostBytes = std::uint64_t{4} << 30;   // far more than any drawing has

[[noreturn]] void refuse(Text text, const std::string& file)
{
    throw BadFile(BadFile::badGroup, textOf(text), std::to_string(mostBytes), file, BadFile::noLine);
}

/// Unpacks a file piece by piece.
class Unpacker {
public:
    Unpacker(std::string_view packed, const std::string& name, const std::function<void()>& betweenSteps)
        : rest(packed),
          file(name),
          pause(betweenSteps)
    {
        constexpr int gzipOnly = 15 + 16;
        if (inflateInit2(&stream, gzipOnly) != Z_OK) throw std::bad_alloc();
    }
    Unpacker(const Unpacker&) = delete;
    Unpacker& operator=(const Unpacker&) = delete;
    ~Unpacker() { inflateEnd(&stream); }

    /// The next piece, until the next call; empty at the end of the last member.
    std::string_view next()
    {
        while (!atEnd) {
            pause();   // also between members that hold nothing
            stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(rest.data()));   // not written to
            stream.avail_in = static_cast<uInt>(std::min<std::size_t>(rest.size(), 1u << 30));
            const std::size_t given = stream.avail_in;
            stream.next_out = reinterpret_cast<Bytef*>(piece);
            stream.avail_out = sizeof piece;
            const int status = inflate(&stream, Z_NO_FLUSH);
            rest.remove_prefix(given - stream.avail_in);
            if (status == Z_STREAM_END) beginMember();
            else if (status != Z_OK) fail(status);
            if (const std::size_t count = sizeof piece - stream.avail_out) return {piece, count};
        }
        return {};
    }

private:
    void beginMember()
    {
        while (!rest.empty() && rest.front() == '\0') rest.remove_prefix(1);   // tapes fill blocks with them
        atEnd = rest.empty();
        inflateReset(&stream);
    }
    [[noreturn]] void fail(int status) const
    {
        if (status == Z_MEM_ERROR) throw std::bad_alloc();
        refuse(status == Z_BUF_ERROR ? Text::gzipBreaksOff : Text::gzipDamaged, file);
    }

    std::string_view rest;
    const std::string& file;
    const std::function<void()>& pause;
    z_stream stream{};
    bool atEnd = false;
    char piece[1u << 16];
};

}   // namespace

bool isGzip(std::string_view bytes) noexcept { return bytes.starts_with("\x1F\x8B"); }

std::string unpackGzip(std::string_view packed, const std::string& file, const std::function<void()>& pause)
{
    const auto walk = [&](auto take) {
        Unpacker unpacker(packed, file, pause);
        for (std::string_view piece = unpacker.next(); !piece.empty(); piece = unpacker.next()) take(piece);
    };
    std::uint64_t size = 0;
    walk([&](std::string_view piece) {
        if ((size += piece.size()) > mostBytes) refuse(Text::gzipTooLarge, file);
    });
    std::string bytes;
    bytes.reserve(static_cast<std::size_t>(size));
    walk([&](std::string_view piece) {
        if (piece.size() > size - bytes.size()) refuse(Text::gzipDamaged, file);   // changed meanwhile
        bytes += piece;
    });
    return bytes;
}

}   // namespace belvor
