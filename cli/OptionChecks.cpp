#include "cli/OptionChecks.h"

#include "cli/Options.h"
#include "cli/Templates.h"
#include "imagefile/PictureFormat.h"
#include "platform/Files.h"
#include "platform/OutputFile.h"

#include <unordered_map>

namespace belvor {
namespace {

/// As fileIdentity(); in folders that are not there yet, names that only differ in their spelling are equal.
std::string identityOf(const std::string& path)
{
    std::string identity = fileIdentity(path);
    return identity != path ? identity : normalPath(path);
}

/// Files told apart whatever name or link leads to them.
class FileSet {
public:
    /// False when it is there already.
    bool add(const std::string& path) { return path.empty() || names.emplace(identityOf(path), path).second; }
    /// The name that the file was added by; null when it was not.
    const std::string* find(const std::string& path) const
    {
        const auto found = path.empty() ? names.end() : names.find(identityOf(path));
        return found == names.end() ? nullptr : &found->second;
    }

private:
    std::unordered_map<std::string, std::string> names;   // by identity
};

/// The files of a call by what they are for.
struct Roles {
    explicit Roles(const Options& options)
    {
        for (const Job& job : options.jobs) {
            if (!job.fromInput()) models.add(job.model);
            if (options.dxfLog) logs.add(job.model + ".log");
        }
        for (const ChosenView& view : options.chosenViews) views.add(view.file);
    }
    FileSet models, views, logs, outputs;
};

template <class Visit>
void forEachFile(const Options& options, Visit visit)
{
    for (const Job& job : options.jobs)
        forEachOutput(job, [&](const std::string& name) {
            if (name != standardStream) visit(name);
        });
}

/// Whether a picture of that name can hold what is asked for.
void checkFormat(const Options& options, const std::string& output)
{
    const std::optional<PictureFormat> format = pictureFormatOf(options, output);
    if (!format) refuse(output == standardStream ? Text::outputNeedsFormat : Text::notAPicture, {output});
    if (format == PictureFormat::svg && !options.edges && !options.lines.curves)
        refuse(Text::vectorsNeedLines, {output});
    if (options.rows && format != PictureFormat::ombr && format != PictureFormat::png)
        refuse(Text::rowsNeedFormat, {output});
}

/// Standard input is one model, and standard output takes one thing.
void checkStreams(const Options& options)
{
    std::size_t pictures = 0;
    for (const Job& job : options.jobs) {
        if (job.fromInput() && options.batch) refuse(Text::notWithEach, {standardStream});
        if (job.fromInput() && options.dxfLog) refuse(Text::logNeedsFile);
        if (job.fromInput() && job.type == FileType::unknown) refuse(Text::inputNeedsType);
        forEachOutput(job, [&](const std::string& name) {
            checkFormat(options, name);
            pictures += name == standardStream;
        });
    }
    if (options.format && pictures == 0) refuse(Text::formatNeedsOutput);
    if (pictures + options.info + (options.report == standardStream) > 1 && pictures > 0)
        refuse(Text::outputTwice);
}

/// No two files that are written have one name.
void checkOutputs(const Options& options, Roles& roles)
{
    FileSet saved;
    saved.add(options.savedView);
    forEachFile(options, [&](const std::string& output) {
        if (!roles.outputs.add(output)) refuse(Text::namedTwice, {output});
        if (saved.find(output)) refuse(Text::pictureIsView, {output});
    });
}

/// Nothing that is written is a file that is read, or the log. Only the view may be brought up to date.
void checkInputsKept(const Options& options, const Roles& roles)
{
    const auto check = [](const std::string& written, const FileSet& kept, Text refusal) {
        if (kept.find(written)) refuse(refusal, {written});
    };
    forEachFile(options, [&](const std::string& output) {
        check(output, roles.models, Text::wouldOverwriteModel);
        check(output, roles.views, Text::wouldOverwriteView);
        check(output, roles.logs, Text::wouldOverwriteLog);
    });
    check(options.savedView, roles.models, Text::wouldOverwriteModel);
    check(options.savedView, roles.logs, Text::wouldOverwriteLog);
    for (const Job& job : options.jobs) {
        if (!options.dxfLog) break;
        check(job.model + ".log", roles.models, Text::wouldOverwriteModel);
        check(job.model + ".log", roles.views, Text::wouldOverwriteView);
    }
}

/// The report takes the place of no other file of the run.
void checkReport(const Options& options, Roles& roles)
{
    if (options.report.empty() || options.report == "-") return;
    roles.outputs.add(options.savedView);
    for (const FileSet* const set : {&roles.outputs, &roles.models, &roles.views, &roles.logs})
        if (const std::string* const other = set->find(options.report))
            refuse(Text::wouldOverwriteOther, {options.report, *other});
}

}   // namespace

void checkTogether(const Options& options)
{
    if (options.changes.zoom && options.changes.unitsPerPixel) refuse(Text::zoomAndScale);
    const struct {
        bool given;
        const char* name;
    } ofMany[] = {{options.processes != 0, "--jobs"},
                  {options.failFast, "--fail-fast"},
                  {options.nullSeparated, "--null"},
                  {options.skipExisting, "--skip-existing"}},
      ofOne[] = {{!options.outputs.empty(), "--output"},
                 {options.info, "--info"},
                 {options.format.has_value(), "--format"},
                 {options.rows.has_value(), "--rows"},
                 {!options.savedView.empty(), "--save-view"}};
    for (const auto& option : ofMany)
        if (option.given && !options.batch) refuse(Text::needsEach, {option.name});
    for (const auto& option : ofOne)
        if (option.given && options.batch) refuse(Text::notWithEach, {option.name});
    if (options.rows && options.rows->end > options.height)
        refuse(Text::rowsOutside, {std::to_string(options.height)});
    if (options.nullSeparated && options.list.empty()) refuse(Text::needsEach, {"--null"});
    for (const std::string& pattern : options.each)
        if (!pictureFormatOfPath(pattern)) refuse(Text::notAPicture, {pattern});
    if (options.batch && options.each.empty() && options.report.empty()) refuse(Text::nothingToDo);
}

void checkWhole(const Options& options)
{
    if (options.chosenViews.size() > 1)
        for (const std::string& output : options.outputs)
            if (!hasViewWord(output)) refuse(Text::viewWordNeeded, {output});
    checkStreams(options);
    Roles roles(options);
    checkOutputs(options, roles);
    checkInputsKept(options, roles);
    checkReport(options, roles);
    if (options.outputs.empty() && options.savedView.empty() && !options.info && options.report.empty())
        refuse(Text::nothingToDo);
    if (!options.savedView.empty() && options.chosenViews.size() > 1) refuse(Text::oneViewToSave);
    for (const Job& job : options.jobs)
        if (job.type == FileType::unknown) refuse(Text::unknownEnding, {job.model});
}

}   // namespace belvor
