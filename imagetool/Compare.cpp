// belvor-image compare: two Ombr files, or two models seen by one view.

#include "cli/belvor_render.h"
#include "imagefile/ImageComparison.h"
#include "imagefile/PngFile.h"
#include "imagetool/Command.h"
#include "platform/Files.h"
#include "platform/Process.h"
#include "scene/Material.h"

#include <array>
#include <cstring>
#include <optional>
#include <utility>

namespace belvor {
namespace {

struct Comparands {
    std::string a, b, marked;
    Words renderOptions;
};

Comparands comparandsOf(const Words& words)
{
    Comparands found;
    Words names;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string& word = words[i];
        if (word == "--out" && i + 1 < words.size()) found.marked = words[++i];
        else if (word.starts_with("--out=")) found.marked = word.substr(6);
        else if (names.size() < 2 && !word.starts_with('-')) names.push_back(word);
        else found.renderOptions.push_back(word);
    }
    if (names.size() != 2) throw WrongUse(Text::wrongWords, {"compare"});
    found.a = names[0];
    found.b = names[1];
    if (!found.marked.empty() && pictureFormatOfPath(found.marked) != PictureFormat::png)
        throw WrongUse(Text::markedIsPng, {found.marked});
    for (const std::string& name : names)
        if (!found.marked.empty() && isSameFile(name, found.marked))
            throw WrongUse(Text::wouldOverwriteImage, {found.marked});
    return found;
}

bool isOmbrFile(const std::string& path)
{
    FileSource source(path);
    std::array<char, 4> start{};
    if (source.size() < start.size()) return false;
    source.read(0, start.data(), start.size());
    return std::memcmp(start.data(), "II*", start.size()) == 0;
}

/// A file for the time of a comparison.
class Scratch {
public:
    explicit Scratch(const char* ending)
        : path(temporaryNameFor(temporaryFolder() + "/belvor-image") + ending)
    {}
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;
    ~Scratch() { removeFile(path); }
    const std::string path;
};

/// Has belvor-render do something; it tells about failures itself.
void render(const Words& options, const Words& words)
{
    MaterialSequence::ofProgram().reset();   // each model as if it were the run's only one
    Words line{"belvor-render", "--quiet"};
    line.insert(line.end(), options.begin(), options.end());
    line.insert(line.end(), words.begin(), words.end());
    const int status = runArguments(std::move(line));
    constexpr int badModel = 1, files = 3;
    if (status != 0) throw RenderFailed{status == badModel ? files : status};
}

bool namesView(const Words& options)
{
    for (const std::string& option : options)
        if (option.starts_with("--view") || (option.starts_with("-v") && !option.starts_with("--")))
            return true;
    return false;
}

/// Picture of what differs: all else is pale, so that it is seen by lightness alone.
class Marked {
public:
    Marked(const std::string& path, int width, int height)
        : output(path),
          file(output, static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height))
    {}

    void writeRow(std::span<const std::uint8_t> bits, std::span<const std::uint8_t> rgb)
    {
        for (std::size_t i = 0; i < bits.size(); ++i)
            std::memset(&file.row()[3 * i], lightnessOf(bits[i], &rgb[3 * i]), 3);
        file.writeRow();
    }
    void commit()
    {
        file.finishPixels();
        file.finish();
        output.finish(checkForStop);
        output.commit();
    }

private:
    static std::uint8_t lightnessOf(std::uint8_t bits, const std::uint8_t* colour) noexcept
    {
        constexpr int palest = 255, darkestSame = 191;
        constexpr std::uint8_t onlyColour = 96, shape = 0;
        if (bits == 0)
            return static_cast<std::uint8_t>(darkestSame
                                             + (palest - darkestSame)
                                                   * (2 * colour[0] + 5 * colour[1] + colour[2]) / (8 * 255));
        return bits == ImageComparison::colourDiffers ? onlyColour : shape;
    }

    OutputFile output;
    PngFile file;
};

Answer compareFiles(const std::string& a, const std::string& b, const std::string& marked)
{
    OpenImage first(a), second(b);
    const ImageHeader& header = first->header();
    if (const Text why = ImageComparison::obstacle(header, second->header()); why != Text::none)
        throw WrongUse(why, {});
    ImageComparison comparison(header, second->header());
    std::optional<Marked> picture;
    if (!marked.empty()) picture.emplace(marked, header.width, header.height);
    for (int row = 0; row < header.height; ++row) {
        checkForStop();
        first->readRow(row);
        second->readRow(row);
        const auto bits = comparison.compareRow(row, *first, *second);
        if (picture) picture->writeRow(bits, first->rgb());
    }
    if (picture) picture->commit();
    printAnswer(comparison.toJson() + '\n');
    return comparison.anyDiffers() ? Answer::no : Answer::yes;
}

Answer compareModels(const Comparands& models)
{
    const Scratch view(".bvp"), a(".omb"), b(".omb");
    Words options = models.renderOptions;
    if (!namesView(options)) {
        render(options, {models.a, "--save-view", view.path});
        options.insert(options.end(), {"--view", view.path});
    }
    render(options, {models.a, a.path});
    render(options, {models.b, b.path});
    return compareFiles(a.path, b.path, models.marked);
}

}   // namespace

Answer compareImages(const Words& words)
{
    const Comparands both = comparandsOf(words);
    const bool ombr = isOmbrFile(both.a);
    if (ombr != isOmbrFile(both.b)) throw WrongUse(Text::imageAndModel, {});
    if (ombr && !both.renderOptions.empty()) throw WrongUse(Text::unknownOption, {both.renderOptions[0]});
    return ombr ? compareFiles(both.a, both.b, both.marked) : compareModels(both);
}

}   // namespace belvor
