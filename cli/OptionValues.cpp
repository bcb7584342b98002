#include "cli/OptionValues.h"

#include "calcore/Number.h"
#include "imagefile/OmbrFile.h"
#include "platform/Workers.h"

#include <algorithm>

namespace belvor {
namespace {

std::string lowerCase(std::string text)
{
    for (char& c : text)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c | 0x20);
    return text;
}

/// Numbers with commas between them; false when there are others or more.
template <std::size_t count>
bool readNumbers(std::string_view text, std::array<double, count>& numbers)
{
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t comma = text.find(',');
        if ((comma == text.npos) != (i + 1 == count) || !isDouble(text.substr(0, comma), numbers[i]))
            return false;
        text.remove_prefix(std::min(text.size(), comma + 1));
    }
    return true;
}

}   // namespace

void takeSize(const std::string& text, Options& options)
{
    const std::size_t cross = text.find_first_of("xX");
    std::int32_t width = 0, height = 0;
    const std::string_view view = text;
    if (cross == std::string::npos || !isDigit(text[0]) || cross + 1 == text.size()
        || !isDigit(text[cross + 1]) || !isLong(view.substr(0, cross), width)
        || !isLong(view.substr(cross + 1), height))
        refuse(Text::badSize, {text});
    if (width < 1 || width > OmbrFile::largestWidth || height < 1 || height > OmbrFile::largestHeight)
        refuse(Text::sizeOutOfRange,
               {std::to_string(OmbrFile::largestWidth), std::to_string(OmbrFile::largestHeight), text});
    options.width = width;
    options.height = height;
}

void takeThreads(const std::string& text, Options& options)
{
    std::int32_t count = 0;
    constexpr auto most = static_cast<std::int32_t>(Workers::maxThreads);
    if (!isLong(text, count) || count < 1 || count > most)
        refuse(Text::badThreads, {std::to_string(most), text});
    options.threads = static_cast<unsigned>(count);
}

void takeProcesses(const std::string& value, Options& options)
{
    constexpr std::int32_t most = 1024;
    std::int32_t count = 0;
    if (!isLong(value, count) || count < 1 || count > most)
        refuse(Text::badProcesses, {std::to_string(most), value});
    options.processes = static_cast<unsigned>(count);
}

void takeMaxMemory(const std::string& value, Options& options)
{
    std::int32_t count = 0;
    const std::size_t unit = std::string_view("kmg").find(lowerCase(value).back());
    if (unit == std::string_view::npos || !isLong(std::string_view(value).substr(0, value.size() - 1), count)
        || count < 1)
        refuse(Text::badMemory, {value});
    options.maxMemory = static_cast<std::uint64_t>(count) << (10 * (unit + 1));
}

void takeType(const std::string& value, Options& options)
{
    const std::string word = lowerCase(value);
    for (const ModelFormat& format : modelFormats())
        if (word == format.name) options.type = format.type;
    if (options.type == FileType::unknown) refuse(Text::badType, {value});
}

void takeFormat(const std::string& value, Options& options)
{
    options.format = pictureFormatNamed(value);
    if (!options.format) refuse(Text::badFormat, {value});
}

void takeRows(const std::string& value, Options& options)
{
    const std::string_view text = value;
    const std::size_t colon = text.find(':');
    RowRange rows{};
    if (colon == text.npos || !isDigit(text[0]) || !isLong(text.substr(0, colon), rows.first)
        || colon + 1 == text.size() || !isDigit(text[colon + 1]) || !isLong(text.substr(colon + 1), rows.end)
        || rows.first >= rows.end)
        refuse(Text::badRows, {value});
    options.rows = rows;
}

void takeReading(const std::string& value, Options& options)
{
    const std::string word = lowerCase(value);
    if (word != "strict" && word != "modern") refuse(Text::badReading, {value});
    options.rules = word == "modern" ? ReadingRules::modern : ReadingRules::strict;
}

void takeColours(const std::string& value, Options& options)
{
    const std::string word = lowerCase(value);
    if (word != "layer" && word != "drawing") refuse(Text::badColours, {value});
    options.colours = word == "drawing" ? DrawingColours::ofDrawing : DrawingColours::ofLayers;
}

void takeEdges(const std::string& value, Options& options)
{
    const std::string word = lowerCase(value);
    if (!word.empty() && word != "all") refuse(Text::badEdges, {value});
    options.edges = true;
    options.lines.everyEdge = word == "all";
}

void takeBounds(const std::string& value, Options& options)
{
    const std::string word = lowerCase(value);
    if (word != "surfaces" && word != "all") refuse(Text::badBounds, {value});
    options.curvesInBounds = word == "all";
}

void takeLineWidth(const std::string& value, Options& options)
{
    constexpr std::int32_t maxWidth = 15;
    std::int32_t width = 0;
    if (!isDigit(value[0]) || !isLong(value, width) || width < 1 || width > maxWidth || width % 2 == 0)
        refuse(Text::badLineWidth, {value});
    options.lines.width = width;
}

std::array<std::uint8_t, 3> colourOf(const char* option, const std::string& value)
{
    constexpr std::string_view digits = "0123456789abcdef";
    const std::string word = lowerCase(value);
    std::array<std::uint8_t, 3> colour{};
    if (value.size() != 7 || value[0] != '#') refuse(Text::badColour, {option, value});
    for (std::size_t i = 1; i < value.size(); ++i) {
        const std::size_t digit = digits.find(word[i]);
        if (digit == digits.npos) refuse(Text::badColour, {option, value});
        std::uint8_t& channel = colour[(i - 1) / 2];
        channel = static_cast<std::uint8_t>(channel << 4 | digit);
    }
    return colour;
}

void takeSurfaces(const std::string& value, Options& options)
{
    const std::string word = lowerCase(value);
    if (word != "on" && word != "off" && word != "embed") refuse(Text::badSurfaces, {value});
    options.lines.surfaces = word != "off";
    options.embedSurfaces = word == "embed";
}

Point<3> pointOf(const char* option, const std::string& value)
{
    std::array<double, 3> numbers;
    if (!readNumbers(value, numbers)) refuse(Text::badPoint, {option, value});
    return {numbers[0], numbers[1], numbers[2]};
}

double numberOf(const char* option, const std::string& value)
{
    double number = 0.0;
    if (!isDouble(value, number)) refuse(Text::badNumber, {option, value});
    return number;
}

double positiveNumberOf(const char* option, const std::string& value)
{
    double number = 0.0;
    if (!isDouble(value, number) || !(number > 0.0)) refuse(Text::badPositiveNumber, {option, value});
    return number;
}

void takeLight(const std::string& value, Options& options)
{
    std::array<double, 3> numbers;
    auto& lights = options.changes.lights;
    if (value.size() < 2 || value[0] < '1' || value[0] > '5' || value[1] != '='
        || !readNumbers(std::string_view(value).substr(2), numbers))
        refuse(Text::badLight, {value});
    auto& light = lights[static_cast<std::size_t>(value[0] - '1')];
    if (light) refuse(Text::optionTwice, {std::string("--light ") + value[0]});
    light = ParallelLightSetting{numbers[0], numbers[1], numbers[2]};
}

void takeProjection(bool parallel, Options& options)
{
    if (options.changes.parallel.value_or(parallel) != parallel) refuse(Text::twoProjections);
    options.changes.parallel = parallel;
}

}   // namespace belvor
