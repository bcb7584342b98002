#include "cli/Options.h"

#include "calcore/Number.h"
#include "imagefile/OmbrFile.h"
#include "imagefile/PictureFormat.h"
#include "platform/Files.h"
#include "platform/Workers.h"

#include <algorithm>

namespace belvor {
namespace {

constexpr char lowerCase(char c) noexcept { return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c; }

void parseSize(const std::string& text, Options& options)
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

void parseThreads(const std::string& text, Options& options)
{
    std::int32_t count = 0;
    constexpr auto most = static_cast<std::int32_t>(Workers::maxThreads);
    if (!isLong(text, count) || count < 1 || count > most)
        refuse(Text::badThreads, {std::to_string(most), text});
    options.threads = static_cast<unsigned>(count);
}

FileType typeNamed(const std::string& written)
{
    std::string name = written;
    std::transform(name.begin(), name.end(), name.begin(), lowerCase);
    for (const FileType type : {FileType::things, FileType::dxf, FileType::man})
        if (name == nameOf(type)) return type;
    refuse(Text::badType, {written});
}

ReadingRules rulesNamed(const std::string& name)
{
    if (name == "strict") return ReadingRules::strict;
    if (name == "modern") return ReadingRules::modern;
    refuse(Text::badReading, {name});
}

/// The report takes the place of no other file of the run.
void checkReport(const Options& options)
{
    if (options.report.empty() || options.report == "-") return;
    const auto check = [&options](const std::string& other) {
        if (!other.empty() && isSameFile(options.report, other))
            refuse(Text::wouldOverwriteOther, {options.report, other});
    };
    for (const std::string& output : options.outputs) check(output);
    for (const std::string& other : {options.savedView, options.model, options.view}) check(other);
    if (options.dxfLog) check(options.model + ".log");
}

/// Nothing that is written is a file that is read, or the log, whatever name or link leads to it.
/// Only the view may be brought up to date.
void checkInputsKept(const Options& options)
{
    const auto check = [](const std::string& written, const std::string& kept, Text refusal) {
        if (!written.empty() && !kept.empty() && isSameFile(written, kept)) refuse(refusal, {written});
    };
    const std::string log = options.dxfLog ? options.model + ".log" : "";
    for (const std::string& output : options.outputs) {
        check(output, options.model, Text::wouldOverwriteModel);
        check(output, options.view, Text::wouldOverwriteView);
        check(output, log, Text::wouldOverwriteLog);
    }
    check(options.savedView, options.model, Text::wouldOverwriteModel);
    check(options.savedView, log, Text::wouldOverwriteLog);
    check(log, options.model, Text::wouldOverwriteModel);
    check(log, options.view, Text::wouldOverwriteView);
}

void takeEdges(const std::string& value, Options& options)
{
    if (!value.empty() && value != "all") refuse(Text::badEdges, {value});
    options.edges = true;
    options.lines.everyEdge = value == "all";
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
    std::array<std::uint8_t, 3> colour{};
    if (value.size() != 7 || value[0] != '#') refuse(Text::badColour, {option, value});
    for (std::size_t i = 1; i < value.size(); ++i) {
        const std::size_t digit = digits.find(lowerCase(value[i]));
        if (digit == digits.npos) refuse(Text::badColour, {option, value});
        std::uint8_t& channel = colour[(i - 1) / 2];
        channel = static_cast<std::uint8_t>(channel << 4 | digit);
    }
    return colour;
}

void takeSurfaces(const std::string& value, Options& options)
{
    if (value != "on" && value != "off") refuse(Text::badSurfaces, {value});
    options.lines.surfaces = value == "on";
}

/// What the rules of single options do not say.
void checkWhole(Options& options)
{
    for (const std::string& output : options.outputs) {
        if (!pictureFormatOfPath(output)) refuse(Text::notAPicture, {output});
        const auto isThis = [&output](const std::string& other) { return isSameFile(output, other); };
        if (std::count_if(options.outputs.begin(), options.outputs.end(), isThis) > 1)
            refuse(Text::namedTwice, {output});
        if (isThis(options.savedView)) refuse(Text::pictureIsView, {output});
    }
    checkInputsKept(options);
    checkReport(options);
    if (options.outputs.empty() && options.savedView.empty() && !options.info && options.report.empty())
        refuse(Text::nothingToDo);
    if (options.type == FileType::unknown) options.type = fileTypeOf(options.model);
    if (options.type == FileType::unknown) refuse(Text::unknownEnding, {options.model});
}

std::string help();

constexpr OptionRow optionRows[] = {
    {"--size", 's', Text::valueSize, Text::helpSize, false, parseSize},
    {"--view", 'v', Text::valueViewFile, Text::helpView, false,
     [](const std::string& value, Options& options) { options.view = value; }},
    {"--save-view", 0, Text::valueViewFile, Text::helpSaveView, false,
     [](const std::string& value, Options& options) { options.savedView = value; }},
    {"--output", 'o', Text::valueFile, Text::helpOutput, true,
     [](const std::string& value, Options& options) { options.outputs.push_back(value); }},
    {"--type", 0, Text::valueType, Text::helpType, false,
     [](const std::string& value, Options& options) { options.type = typeNamed(value); }},
    {"--threads", 0, Text::valueThreads, Text::helpThreads, false, parseThreads},
    {"--edges", 0, Text::valueEdges, Text::helpEdges, false, takeEdges, true},
    {"--line-width", 0, Text::valueLineWidth, Text::helpLineWidth, false, takeLineWidth},
    {"--line-colour", 0, Text::valueColour, Text::helpLineColour, false,
     [](const std::string& value, Options& options) {
         options.lines.colour = colourOf("--line-colour", value);
     }},
    {"--background", 0, Text::valueColour, Text::helpBackground, false,
     [](const std::string& value, Options& options) {
         options.background = colourOf("--background", value);
     }},
    {"--surfaces", 0, Text::valueSurfaces, Text::helpSurfaces, false, takeSurfaces},
    {"--info", 0, Text::none, Text::helpInfo, true,
     [](const std::string&, Options& options) { options.info = true; }},
    {"--reading", 0, Text::valueReading, Text::helpReading, false,
     [](const std::string& value, Options& options) { options.rules = rulesNamed(value); }},
    {"--report", 0, Text::valueReport, Text::helpReport, false,
     [](const std::string& value, Options& options) { options.report = value; }},
    {"--timing", 0, Text::none, Text::helpTiming, true,
     [](const std::string&, Options& options) { options.timing = true; }},
    {"--fail-empty", 0, Text::none, Text::helpFailEmpty, true,
     [](const std::string&, Options& options) { options.failEmpty = true; }},
    {"--fail-repaired", 0, Text::none, Text::helpFailRepaired, true,
     [](const std::string&, Options& options) { options.failRepaired = true; }},
    {"--dxf-log", 0, Text::none, Text::helpDxfLog, true,
     [](const std::string&, Options& options) { options.dxfLog = true; }},
    {"--quiet", 'q', Text::none, Text::helpQuiet, true,
     [](const std::string&, Options& options) { options.quiet = true; }},
    {"--version", 'V', Text::none, Text::helpVersion, true,
     [](const std::string&, Options& options) { options.answer = textOf(Text::toolVersion); }},
    {"--help", 'h', Text::none, Text::helpHelp, true,
     [](const std::string&, Options& options) { options.answer = help(); }},
};

std::string help() { return textOf(Text::helpBegin) + optionList(optionRows) + textOf(Text::helpEnd); }

}   // namespace

Options parseOptions(std::vector<std::string> arguments)
{
    if (!arguments.empty()) arguments.erase(arguments.begin());
    Options options;
    std::vector<std::string> words = parseArguments(optionRows, arguments, options);
    if (!options.answer.empty()) return options;
    if (words.empty()) refuse(Text::modelNeeded);
    options.model = words.front();
    options.outputs.insert(options.outputs.begin(), words.begin() + 1, words.end());
    checkWhole(options);
    return options;
}

}   // namespace belvor
