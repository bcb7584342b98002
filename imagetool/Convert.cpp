// belvor-image convert: an Ombr file in another format.

#include "imagefile/ImageWriter.h"
#include "imagefile/OmbrFile.h"
#include "imagefile/PlyFile.h"
#include "imagetool/Command.h"
#include "platform/Files.h"

#include <algorithm>
#include <cstring>

namespace belvor {
namespace {

template <class T>
void copyInto(std::span<const T> from, std::span<T> to)
{
    if (!to.empty()) std::copy(from.begin(), from.end(), to.begin());
}

void writePicture(OmbrReader& image, ImageWriter& picture)
{
    for (int y = 0; y < image.header().height; ++y) {
        checkForStop();
        image.readRow(y);
        const ImageRow row = picture.row();
        copyInto(image.rgb(), row.rgb);
        copyInto(image.depth(), row.depth);
        copyInto(image.material(), row.material);
        picture.writeRow();
    }
    picture.finish();
}

bool endsWithPly(const std::string& path)
{
    const std::size_t dot = path.rfind('.');
    if (dot == path.npos) return false;
    std::string ending = path.substr(dot + 1);
    for (char& c : ending) c = static_cast<char>(c | 0x20);
    return ending == "ply";
}

}   // namespace

Answer convertImage(const Words& words)
{
    if (words.size() != 2) throw WrongUse(Text::wrongWords, {"convert"});
    const std::string& target = words[1];
    const std::optional<PictureFormat> format = pictureFormatOfPath(target);
    if (!endsWithPly(target) && (!format || format == PictureFormat::ombr || format == PictureFormat::svg))
        throw WrongUse(Text::notConvertible, {target});
    if (isSameFile(words[0], target)) throw WrongUse(Text::wouldOverwriteImage, {target});
    OpenImage image(words[0]);
    OutputFile output(target);
    if (format) writePicture(*image, *makeImageWriter(*format, output, image->header()));
    else writePly(*image, output, checkForStop);
    output.commit();
    return Answer::yes;
}

}   // namespace belvor
