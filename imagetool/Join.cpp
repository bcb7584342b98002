// belvor-image join: a picture of its bands.

#include "imagefile/ImageDescription.h"
#include "imagefile/ImageWriter.h"
#include "imagefile/OmbrFile.h"
#include "imagefile/PngReader.h"
#include "imagetool/Command.h"
#include "platform/FileError.h"
#include "platform/Files.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace belvor {
namespace {

/// What a band tells of itself.
struct Band {
    std::string path;
    ImageHeader header;   // of the whole picture; of a PNG file only the sizes
    int firstRow, rows;
    std::string picture;   // the same in all bands of a picture
};

Band ombrBand(const std::string& path)
{
    OpenImage image(path);
    Band band{path, image->header(), image->header().firstRow(), image->header().height, image->software()};
    if (!band.header.band) throw WrongUse(Text::notABand, {path});
    band.header.height = band.header.wholeHeight();
    band.header.band.reset();
    band.picture += describeImage(band.header);
    return band;
}

Band pngBand(const std::string& path)
{
    const PngAccount about = PngReader(path).about();
    const auto place = about.texts.find("Belvor band"), camera = about.texts.find("Belvor camera");
    if (place == about.texts.end() || camera == about.texts.end()) throw WrongUse(Text::notABand, {path});
    const std::string& numbers = place->second;
    int first = -1, whole = 0;
    const char* const end = numbers.data() + numbers.size();
    const auto read = std::from_chars(numbers.data(), end, first);
    if (read.ptr != end) std::from_chars(read.ptr + 1, end, whole);
    const auto rows = static_cast<int>(std::min<std::uint32_t>(about.height, OmbrFile::largestHeight));
    if (first < 0 || whole < rows || first > whole - rows) throw WrongUse(Text::notABand, {path});
    ImageHeader header{static_cast<int>(about.width), whole, {}, {}, {}, {}, {}};
    return {path, header, first, rows,
            camera->second + ' ' + std::to_string(about.width) + ' ' + std::to_string(whole)};
}

/// Sorts the bands by their rows. Throws WrongUse unless they make one whole picture.
void checkBands(std::vector<Band>& bands)
{
    std::sort(bands.begin(), bands.end(),
              [](const Band& a, const Band& b) { return a.firstRow < b.firstRow; });
    int next = 0;
    const auto needNoGap = [&](int row) {
        if (row > next) throw WrongUse(Text::bandsLeaveGap, {std::to_string(next), std::to_string(row - 1)});
    };
    for (const Band& band : bands) {
        if (band.picture != bands.front().picture)
            throw WrongUse(Text::bandsDiffer, {band.path, bands.front().path});
        if (band.firstRow < next)
            throw WrongUse(Text::bandsOverlap, {std::to_string(band.firstRow), band.path});
        needNoGap(band.firstRow);
        next += band.rows;
    }
    needNoGap(bands.front().header.height);
}

void copyOmbr(const Band& band, ImageWriter& picture)
{
    OpenImage image(band.path);
    copyRows(*image, picture);
}

void copyPng(const Band& band, ImageWriter& picture)
{
    PngReader image(band.path);
    for (int y = 0; y < band.rows; ++y) {
        checkForStop();
        const std::span<const std::uint8_t> row = image.readRow();
        std::copy(row.begin(), row.end(), picture.row().rgb.begin());
        picture.writeRow();
    }
}

}   // namespace

Answer joinBands(const Words& words)
{
    if (words.size() < 2) throw WrongUse(Text::wrongWords, {"join"});
    const std::string& target = words.back();
    const std::optional<PictureFormat> format = pictureFormatOfPath(target);
    const bool png = format == PictureFormat::png;
    if (!png && format != PictureFormat::ombr) throw WrongUse(Text::notJoinable, {target});
    std::vector<Band> bands;
    for (const std::string& path : std::span(words).first(words.size() - 1)) {
        if (pictureFormatOfPath(path) != format) throw WrongUse(Text::otherFormat, {path, target});
        if (isSameFile(path, target)) throw WrongUse(Text::wouldOverwriteImage, {target});
        bands.push_back(png ? pngBand(path) : ombrBand(path));
    }
    checkBands(bands);
    try {
        OutputFile output(target);
        const auto picture = makeImageWriter(*format, output, bands.front().header);
        for (const Band& band : bands) png ? copyPng(band, *picture) : copyOmbr(band, *picture);
        picture->finish();
        output.finish(checkForStop);
        output.commit();
    } catch (const OmbrFile::Error& error) {
        throw FileError(target, Text::cannotWrite, error.code());
    }
    return Answer::yes;
}

}   // namespace belvor
