// belvor-image convert: an Ombr file in another format.

#include "imagefile/ImageWriter.h"
#include "imagefile/OmbrFile.h"
#include "imagefile/PlyFile.h"
#include "imagetool/Command.h"
#include "platform/Files.h"

namespace belvor {
namespace {

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
    if (image->header().band) throw WrongUse(Text::isBand, {words[0]});
    OutputFile output(target);
    if (format) {
        const auto picture = makeImageWriter(*format, output, image->header());
        copyRows(*image, *picture);
        picture->finish();
    } else {
        writePly(*image, output, checkForStop);
    }
    output.finish(checkForStop);
    output.commit();
    return Answer::yes;
}

}   // namespace belvor
