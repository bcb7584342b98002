#include "imagefile/ExrHeader.h"

#include "imagefile/Cryptomatte.h"
#include "imagefile/ImageDescription.h"
#include "imagefile/LittleEndian.h"
#include "imagefile/PictureGeometry.h"

#include <algorithm>

namespace belvor {
namespace {

/// Attributes one after another: name, type, size, value.
class Attributes {
public:
    void add(std::string_view name, std::string_view type, const LittleEndian& value)
    {
        addText(name, type, value.data());
    }
    void addText(std::string_view name, std::string_view type, std::string_view value)
    {
        bytes.raw(name).u8(0).raw(type).u8(0);
        bytes.u32(static_cast<std::uint32_t>(value.size())).raw(value);
    }
    void addString(const std::string& name, std::string_view value) { addText(name, "string", value); }
    const LittleEndian& end() { return bytes.u8(0); }

    LittleEndian bytes;
};

LittleEndian channelList()
{
    LittleEndian list;
    for (const ExrChannel& channel : exrChannels) {
        list.raw(channel.name).u8(0).u32(static_cast<std::uint32_t>(channel.type));
        list.u32(0).u32(1).u32(1);   // sampled at every pixel
    }
    return list.u8(0);
}

LittleEndian bytesOf(const PictureGeometry::Matrix& matrix)
{
    LittleEndian bytes;
    for (const auto& row : matrix)
        for (const double value : row) bytes.f32(static_cast<float>(value));
    return bytes;
}

}   // namespace

std::string exrHeader(const ImageHeader& header, const Cryptomatte& matte)
{
    constexpr std::uint8_t zipOf16Rows = 3, increasingY = 0;
    const auto width = static_cast<std::uint32_t>(header.width);
    const auto height = static_cast<std::uint32_t>(header.height);
    const LittleEndian window = LittleEndian().u32(0).u32(0).u32(width - 1).u32(height - 1);
    const PictureGeometry geometry(header.camera, header.width, header.height);

    Attributes attributes;
    attributes.bytes.u32(exrMagic).u32(exrVersion);
    attributes.addString("belvor", describeImage(header));
    attributes.add("channels", "chlist", channelList());
    attributes.add("compression", "compression", LittleEndian().u8(zipOf16Rows));
    const std::string prefix = Cryptomatte::attributePrefix();
    attributes.addString(prefix + "conversion", "uint32_to_float32");
    attributes.addString(prefix + "hash", "MurmurHash3_32");
    attributes.addString(prefix + "manifest", matte.manifest());
    attributes.addString(prefix + "name", Cryptomatte::layer);
    attributes.add("dataWindow", "box2i", window);
    attributes.add("displayWindow", "box2i", window);
    attributes.add("lineOrder", "lineOrder", LittleEndian().u8(increasingY));
    attributes.add("pixelAspectRatio", "float", LittleEndian().f32(1.0f));
    attributes.add("screenWindowCenter", "v2f", LittleEndian().f32(0.0f).f32(0.0f));
    attributes.add("screenWindowWidth", "float", LittleEndian().f32(1.0f));
    attributes.add("worldToCamera", "m44f", bytesOf(geometry.worldToCamera()));
    attributes.add("worldToNDC", "m44f", bytesOf(geometry.worldToPicture()));
    return attributes.end().data();
}

}   // namespace belvor
