// Values of an EXR file by the format's own library: exr_values FILE text NAME; or FILE ANYTHING CHANNEL...
#include <ImfChannelList.h>
#include <ImfFrameBuffer.h>
#include <ImfHeader.h>
#include <ImfInputFile.h>
#include <ImfMatrixAttribute.h>
#include <ImfStringAttribute.h>

#include <cstdio>
#include <string>
#include <vector>

int main(int argc, char** argv)
{
    Imf::InputFile file(argv[1]);
    if (!file.isComplete()) return 1;
    if (std::string(argv[2]) == "text") {
        const Imf::Header& header = file.header();
        if (const auto* text = header.findTypedAttribute<Imf::StringAttribute>(argv[3]))
            std::fwrite(text->value().data(), 1, text->value().size(), stdout);
        else if (const auto* matrix = header.findTypedAttribute<Imf::M44fAttribute>(argv[3]))
            std::fwrite(matrix->value().getValue(), 4, 16, stdout);
        else return 1;
        return 0;
    }
    const Imath::Box2i window = file.header().dataWindow();
    const std::size_t width = window.max.x + 1, height = window.max.y + 1, count = argc - 3;
    const Imf::PixelType type = file.header().channels()[argv[3]].type;
    const std::size_t bytes = type == Imf::HALF ? 2 : 4;
    std::vector<char> pixels(width * height * count * bytes);
    Imf::FrameBuffer buffer;
    for (std::size_t i = 0; i < count; ++i)
        buffer.insert(argv[3 + i],
                      Imf::Slice(type, pixels.data() + i * bytes, count * bytes, width * count * bytes));
    file.setFrameBuffer(buffer);
    file.readPixels(0, height - 1);
    std::fwrite(pixels.data(), 1, pixels.size(), stdout);
}
