#include "imagefile/OmbrBuff.h"

#include <span>
#include <utility>

namespace belvor {
namespace {

constexpr const char* version = "Belvor 1.1.7 (Dec 16 1997)";

/// The sizes as the file holds them, once they are known to fit.
struct Sizes {
    explicit Sizes(const ImageHeader& header)
        : width(static_cast<std::uint16_t>(header.width)),
          height(static_cast<std::uint16_t>(header.height))
    {
        unsigned long long bytes = 0;
        for (const ImageMaterial& material : header.materials)
            bytes += OmbrFile::materialBytes(material.name);
        OmbrFile::checkSize(header.width, header.height, bytes);
    }
    std::uint16_t width, height;
};

/// The bytes of all material records; each begins at an even position.
std::uint32_t materialRecords(const ImageHeader& header)
{
    unsigned long long bytes = 0;
    for (const ImageMaterial& material : header.materials) bytes += (9 + material.name.size() + 2) / 2 * 2;
    return static_cast<std::uint32_t>(bytes);
}

/// Known to fit before a row takes memory.
int checkedWidth(const Model& model, int width, int height)
{
    unsigned long long bytes = 0;
    for (const auto& [key, material] : model.materials()) bytes += OmbrFile::materialBytes(material.name);
    OmbrFile::checkSize(width, height, bytes);
    return width;
}

}   // namespace

OmbrPicture::OmbrPicture(const std::string& path, const ImageHeader& header)
    : materials(header.materials),
      file(path, Sizes(header).width, static_cast<std::uint16_t>(header.height), version, header.camera)
{}

OmbrPicture::OmbrPicture(OutputFile& output, const ImageHeader& header)
    : materials(header.materials),
      file(output, Sizes(header).width, static_cast<std::uint16_t>(header.height), version, header.camera,
           materialRecords(header), header.band)
{}

void OmbrPicture::finish()
{
    for (const auto& [number, colour, name] : materials)
        file.addMaterial(number, colour[0], colour[1], colour[2], name);
    file.close();
}

OmbrBuff::OmbrBuff(const std::string& path, const Handle<Model>& model, Handle<Camera> view, int width,
                   int height)
    : Buffer(checkedWidth(*model, width, height)),
      camera(std::move(view)),
      picture(path, headerOf(*model, *camera, width, height))
{}

void OmbrBuff::lineDone(int)
{
    fillRow(*this, *camera, picture.row());
    picture.writeRow();
}

}   // namespace belvor
