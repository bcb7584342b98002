#include "cli/Options.h"

#include "calcore/Number.h"
#include "imagefile/OmbrFile.h"
#include "platform/Files.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <sstream>

namespace belvor {
namespace {

constexpr int usageStatus = 2;

[[noreturn]] void refuse(const std::string& text)
{
    throw Usage("belvor-render: " + text + "\nRun with --help for more information.\n", usageStatus);
}

bool endsWith(const std::string& path, const char (&extension)[5])
{
    if (path.size() < 4) return false;
    const std::string end = path.substr(path.size() - 4);
    return std::equal(end.begin(), end.end(), extension,
                      [](char a, char b) { return (a >= 'A' && a <= 'Z' ? a | 0x20 : a) == b; });
}

void parseSize(const std::string& text, Options& options)
{
    const std::size_t cross = text.find_first_of("xX");
    std::int32_t width = 0, height = 0;
    const std::string_view view = text;
    if (cross == std::string::npos || !isDigit(text[0]) || cross + 1 == text.size()
        || !isDigit(text[cross + 1]) || !isLong(view.substr(0, cross), width)
        || !isLong(view.substr(cross + 1), height))
        refuse("--size takes WIDTHxHEIGHT in pixels, as in 1600x1200; it was given \"" + text + "\"");
    if (width < 1 || width > OmbrFile::largestWidth || height < 1 || height > OmbrFile::largestHeight)
        refuse("a picture is at least 1x1 and at most " + std::to_string(OmbrFile::largestWidth) + "x"
               + std::to_string(OmbrFile::largestHeight) + " pixels; --size asks for " + text);
    options.width = width;
    options.height = height;
}

FileType typeNamed(const std::string& name)
{
    for (const FileType type : {FileType::things, FileType::dxf, FileType::man})
        if (name == nameOf(type)) return type;
    refuse("--type takes things, dxf or man; it was given \"" + name + "\"");
}

/// Nothing that is written is a file that is read, or the log, whatever name or link leads to it.
/// Only the view may be brought up to date.
void checkInputsKept(const Options& options)
{
    const auto check = [](const std::string& written, const std::string& kept, const char* what) {
        if (!written.empty() && !kept.empty() && isSameFile(written, kept))
            refuse("\"" + written + "\" would overwrite the " + what);
    };
    const std::string log = options.dxfLog ? options.model + ".log" : "";
    for (const std::string& output : options.outputs) {
        check(output, options.model, "model");
        check(output, options.view, "view");
        check(output, log, "log");
    }
    check(options.savedView, options.model, "model");
    check(options.savedView, log, "log");
    check(log, options.model, "model");
    check(log, options.view, "view");
}

/// What the rules of single options do not say.
void checkWhole(Options& options)
{
    for (const std::string& output : options.outputs) {
        if (!isPicture(output)) refuse("\"" + output + "\" ends neither in .omb nor in .png");
        const auto isThis = [&output](const std::string& other) { return isSameFile(output, other); };
        if (std::count_if(options.outputs.begin(), options.outputs.end(), isThis) > 1)
            refuse("\"" + output + "\" is named twice");
        if (isThis(options.savedView)) refuse("\"" + output + "\" cannot be the picture and the view");
        constexpr long long largestPng = 0x7FFFFFFF;   // bytes of its pixels
        if (isPng(output) && (options.width * 3ll + 1) * options.height > largestPng)
            refuse("a PNG picture of that size cannot be written; an .omb picture can");
    }
    checkInputsKept(options);
    if (options.outputs.empty() && options.savedView.empty() && !options.info)
        refuse("nothing to do: name an OUTPUT ending in .omb or .png, or use --save-view or --info");
    if (options.type == FileType::unknown) options.type = fileTypeOf(options.model);
    if (options.type == FileType::unknown)
        refuse("\"" + options.model
               + "\" ends in none of .thf, .dxf and .man: say --type things, dxf or man");
}

}   // namespace

bool isPng(const std::string& path) { return endsWith(path, ".png"); }
bool isPicture(const std::string& path) { return isPng(path) || endsWith(path, ".omb"); }

Options parseOptions(std::vector<std::string> arguments)
{
    CLI::App app("Draws a 3-D model (.thf, .dxf, .man) into pictures (.omb with depth and materials, .png).",
                 "belvor-render");
    app.allow_windows_style_options(
        false);   // a path may begin with a slash; scripts run unchanged on every system
    Options options;
    std::string size, type;
    app.add_option("--size", size, "Size of the pictures in pixels, 800x600 unless given")->type_name("WxH");
    app.add_option("--view", options.view, "View and lights from a parameter file instead of the whole model")
        ->type_name("FILE.bvp");
    app.add_option("--save-view", options.savedView, "Write the view used to a parameter file")
        ->type_name("FILE.bvp");
    app.add_option("--type", type, "The model's format, whatever its name says")->type_name("things|dxf|man");
    app.add_flag("--info", options.info, "Describe the model on standard output as a JSON object");
    app.add_flag("--dxf-log", options.dxfLog,
                 "Write what a DXF drawing holds into a file beside it, .log appended");
    app.add_flag("--quiet", options.quiet, "No progress and no remarks on standard error");
    app.add_option("MODEL", options.model, "Model file")->required()->type_name("");
    app.add_option("OUTPUT", options.outputs, "Pictures to write, each ending in .omb or .png")
        ->type_name("");
    try {
        std::reverse(arguments.begin(), arguments.end());
        if (!arguments.empty()) arguments.pop_back();
        app.parse(std::move(arguments));
    } catch (const CLI::ParseError& error) {
        std::ostringstream out, err;
        const int status = app.exit(error, out, err);
        throw status == 0 ? Usage(out.str(), 0) : Usage("belvor-render: " + err.str(), usageStatus);
    }
    if (!size.empty()) parseSize(size, options);
    if (!type.empty()) options.type = typeNamed(type);
    checkWhole(options);
    return options;
}

}   // namespace belvor
