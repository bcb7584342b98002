#include "cli/Png.h"

#include "imagefile/OmbrFile.h"

#include <cstdlib>
#include <new>

namespace {

/// The writer below uses what this returns unseen.
void* reallocateOrThrow(void* memory, std::size_t size)
{
    void* const larger = std::realloc(memory, size);
    if (!larger) throw std::bad_alloc();
    return larger;
}

}   // namespace

#define STBIW_MALLOC(size) reallocateOrThrow(nullptr, size)
#define STBIW_REALLOC(memory, size) reallocateOrThrow(memory, size)
#define STBIW_FREE(memory) std::free(memory)
#define STB_IMAGE_WRITE_IMPLEMENTATION
#define STBI_WRITE_NO_STDIO
#define STB_IMAGE_WRITE_STATIC
#include <stb_image_write.h>

#include <cstdio>

namespace belvor {

PngPicture::PngPicture(OutputFile& file, int w, int h) : output(file), width(w), height(h)
{
    rgb.reserve(3 * static_cast<std::size_t>(w) * static_cast<std::size_t>(h));
}

void PngPicture::writeRow(const Buffer& row)
{
    for (int i = 0; i < width; ++i) {
        const std::uint32_t owner = row.owner(i);
        const std::uint8_t* const colour = owner == Buffer::noFacet ? row.background() : row.colour(owner);
        rgb.insert(rgb.end(), colour, colour + 3);
    }
}

void PngPicture::finish()
{
    struct Target {
        std::FILE* file;
        bool good;
    } target{output.stream(), true};
    const auto write = [](void* context, void* data, int size) {
        auto& to = *static_cast<Target*>(context);
        to.good = to.good
                  && std::fwrite(data, 1, static_cast<std::size_t>(size), to.file)
                         == static_cast<std::size_t>(size);
    };
    const bool encoded = stbi_write_png_to_func(write, &target, width, height, 3, rgb.data(), 3 * width) != 0;
    if (!encoded) throw std::bad_alloc();
    if (!target.good) throw OmbrFile::Error();
}

}   // namespace belvor
