#include "cli/Options.h"

#include "cli/ModelList.h"
#include "cli/OptionChecks.h"
#include "cli/OptionValues.h"

namespace belvor {
namespace {

std::string help();

constexpr OptionRow optionRows[] = {
    {"--size", 's', Text::valueSize, Text::helpSize, false, takeSize},
    {"--view", 'v', Text::valueView, Text::helpView, true,
     [](const std::string& value, Options& options) { options.views.push_back(value); }},
    {"--eye", 0, Text::valuePoint, Text::helpEye, false,
     [](const std::string& value, Options& options) { options.changes.eye = pointOf("--eye", value); }},
    {"--look-at", 0, Text::valuePoint, Text::helpLookAt, false,
     [](const std::string& value, Options& options) {
         options.changes.lookAt = pointOf("--look-at", value);
     }},
    {"--zoom", 0, Text::valueNumber, Text::helpZoom, false,
     [](const std::string& value, Options& options) {
         options.changes.zoom = positiveNumberOf("--zoom", value);
     }},
    {"--scale", 0, Text::valueNumber, Text::helpScale, false,
     [](const std::string& value, Options& options) {
         options.changes.unitsPerPixel = positiveNumberOf("--scale", value);
     }},
    {"--parallel", 0, Text::none, Text::helpParallel, true,
     [](const std::string&, Options& options) { takeProjection(true, options); }},
    {"--perspective", 0, Text::none, Text::helpPerspective, true,
     [](const std::string&, Options& options) { takeProjection(false, options); }},
    {"--light", 0, Text::valueLight, Text::helpLight, true, takeLight},
    {"--sky", 0, Text::valueNumber, Text::helpSky, false,
     [](const std::string& value, Options& options) { options.changes.sky = numberOf("--sky", value); }},
    {"--ground", 0, Text::valueNumber, Text::helpGround, false,
     [](const std::string& value, Options& options) {
         options.changes.ground = numberOf("--ground", value);
     }},
    {"--save-view", 0, Text::valueViewFile, Text::helpSaveView, false,
     [](const std::string& value, Options& options) { options.savedView = value; }},
    {"--output", 'o', Text::valueFile, Text::helpOutput, true,
     [](const std::string& value, Options& options) { options.outputs.push_back(value); }},
    {"--each", 0, Text::valueTemplate, Text::helpEach, true,
     [](const std::string& value, Options& options) { options.each.push_back(value); }},
    {"--list", 0, Text::valueFile, Text::helpList, false,
     [](const std::string& value, Options& options) { options.list = value; }},
    {"--null", 0, Text::none, Text::helpNull, true,
     [](const std::string&, Options& options) { options.nullSeparated = true; }},
    {"--jobs", 'j', Text::valueThreads, Text::helpProcesses, false, takeProcesses},
    {"--timeout", 0, Text::valueSeconds, Text::helpTimeout, false,
     [](const std::string& value, Options& options) {
         options.timeout = positiveNumberOf("--timeout", value);
     }},
    {"--max-memory", 0, Text::valueMemory, Text::helpMemory, false, takeMaxMemory},
    {"--fail-fast", 0, Text::none, Text::helpFailFast, true,
     [](const std::string&, Options& options) { options.failFast = true; }},
    {"--skip-existing", 0, Text::none, Text::helpSkipExisting, true,
     [](const std::string&, Options& options) { options.skipExisting = true; }},
    {"--type", 0, Text::valueType, Text::helpType, false, takeType},
    {"--format", 0, Text::valueFormat, Text::helpFormat, false, takeFormat},
    {"--rows", 0, Text::valueRows, Text::helpRows, false, takeRows},
    {"--threads", 0, Text::valueThreads, Text::helpThreads, false, takeThreads},
    {"--edges", 0, Text::valueEdges, Text::helpEdges, false, takeEdges, true},
    {"--lines", 0, Text::none, Text::helpLines, true,
     [](const std::string&, Options& options) { options.lines.curves = true; }},
    {"--bounds", 0, Text::valueBounds, Text::helpBounds, false, takeBounds},
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
    {"--reading", 0, Text::valueReading, Text::helpReading, false, takeReading},
    {"--colours", 0, Text::valueColours, Text::helpColours, false, takeColours},
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

std::optional<PictureFormat> pictureFormatOf(const Options& options, const std::string& output)
{
    return output == standardStream ? options.format : pictureFormatOfPath(output);
}

Options parseOptions(std::vector<std::string> arguments)
{
    if (!arguments.empty()) arguments.erase(arguments.begin());
    Options options;
    std::vector<std::string> words = parseArguments(optionRows, arguments, options);
    if (!options.answer.empty()) return options;
    options.arguments = std::move(arguments);
    options.chosenViews = chosenViews(options.views);
    options.batch = !options.each.empty() || !options.list.empty();
    checkTogether(options);
    if (options.batch) {
        options.outputs = options.each;
        for (std::string& model : readList(options)) words.push_back(std::move(model));
    }
    if (words.empty() && options.list.empty()) refuse(Text::modelNeeded);
    if (!options.batch) {
        options.outputs.insert(options.outputs.begin(), words.begin() + 1, words.end());
        words.resize(1);
    }
    for (const std::string& model : words)
        options.jobs.push_back(jobOf(options, options.jobs.size() + 1, model));
    checkWhole(options);
    return options;
}

Options parseWorkerOptions(const std::vector<std::string>& arguments)
{
    Options options;
    parseArguments(optionRows, arguments, options);
    options.chosenViews = chosenViews(options.views);
    options.batch = true;
    options.outputs = options.each;
    return options;
}

}   // namespace belvor
