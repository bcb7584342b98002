#include "cli/Drawing.h"

#include "cli/ConsoleReporter.h"
#include "cli/Deadline.h"
#include "cli/Failures.h"
#include "cli/Info.h"
#include "cli/ModelList.h"
#include "cli/Remarks.h"
#include "errors/BadFile.h"
#include "imagefile/OmbrFile.h"
#include "imagefile/Pictures.h"
#include "platform/FileError.h"
#include "platform/Files.h"
#include "platform/Process.h"
#include "readers/ForeignFile.h"
#include "render/Frame.h"
#include "render/Outlines.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <memory>

namespace belvor {
namespace {

void writeView(const std::string& path, const ViewParameters& view, const ModelPlace& place)
{
    if (!view.finiteInModel(place.centre, place.radius))
        throw BadView(filledText(Text::viewNotWritable, {path}));
    if (!view.write(path, place.centre, place.radius)) throw FileError(path, Text::cannotWrite, errno);
}

/// Where the model lies, which the views are set by.
struct Bounds {
    Extent<3> box = Extent<3>::nothing();   ///< Only for standard views.
    ModelPlace place;
};

Bounds readDrawn(const Options& options, const Job& job, ConsoleReporter& reporter, RunNotes& notes)
{
    ReadingOptions how;
    how.log = options.dxfLog;
    how.rules = options.rules;
    how.colours = options.colours;
    how.threads = options.threads;
    how.curves = options.lines.curves;
    how.curvesInBounds = options.curvesInBounds;
    reporter.setStages(formatOf(job.type)->firstStage);
    Reading& reading = notes.reading;
    if (job.input)
        reading.model = readModel(*job.input, job.shownModel(), job.type, reporter, how, reading.account);
    else reading.model = readModel(job.model, job.type, reporter, how, reading.account);
    notes.stepDone("read");
    reporter.clear();
    if (reading.account.logFailure != 0)
        throw FileError(job.model + ".log", Text::cannotWrite, reading.account.logFailure);
    Bounds bounds;
    reading.model->bounds(bounds.place.centre, bounds.place.radius);
    const auto isStandard = [](const ChosenView& view) { return view.standard.has_value(); };
    if (std::any_of(options.chosenViews.begin(), options.chosenViews.end(), isStandard))
        bounds.box = reading.model->extent();
    checkBounds(bounds.place.centre, bounds.place.radius, reading.account);
    if (!options.quiet) {
        remarkOn(job.shownModel(), reading);
        remarkOnLines(options, *reading.model, bounds.place);
    }
    if (options.info)
        print(describeModel(job.model, job.type, reading, options.lines.curves, reporter) + '\n');
    return bounds;
}

/// Without hashes a picture has no texts.
PictureTexts textsFor(const ViewParameters& view, const ModelPlace& place, const RunNotes& notes,
                      std::size_t i)
{
    if (notes.hashes.empty()) return {};
    std::string lines = view.text(place.centre, place.radius);
    std::erase(lines, '\r');   // the same on every system
    return {lines, notes.hashes[i]};
}

/// The pictures of all views take their names together.
void drawViews(const Options& options, const Job& job, const std::vector<ViewParameters>& views,
               const ModelPlace& place, Reporter& reporter, RunNotes& notes)
{
    const Handle<Model>& model = notes.reading.model;
    const ImageSize size{options.width, options.height};
    LineStyle lines = options.lines;
    Sharing sharing;
    if (options.threads > 0) sharing.threads = options.threads;
    std::optional<Outlines> outlines;
    if (options.edges) lines.outlines = &outlines.emplace(*model, [&reporter] { reporter.check(2, 0, 0.0); });
    Frame frame(sharing);
    std::vector<Handle<Pictures>> drawn;
    for (std::size_t i = 0; i < views.size(); ++i) {
        const Scene scene = buildScene(views[i], place, size, size.width, size.height);
        std::vector<PictureTarget> targets;
        for (const std::string& output : job.outputs[i])
            targets.push_back({output, pictureFormatOf(options, output).value(), output == standardStream});
        drawn.push_back(makeHandle<Pictures>(targets, *model, scene.camera, size.width, size.height,
                                             textsFor(views[i], place, notes, i), options.rows));
        drawn.back()->setBackground(options.background);
        if (options.embedSurfaces) drawn.back()->embedSurfaces();
        lines.trace = drawn.back()->trace();
        frame.render(*model, *scene.camera, *scene.lights, *drawn.back(), reporter, lines);
        drawn.back()->finish(reporter);
    }
    Pictures::commit(drawn, reporter);
    notes.outputsWritten = true;
    notes.stepDone("render");
}

/// What a model of another kind is; Text::none when that is not known.
Text foreignKindOfModel(const Job& job)
{
    if (job.fromInput()) return job.input ? foreignKindOf(*job.input) : Text::none;
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(openFile(job.model, "rb"), std::fclose);
    char start[16];
    const std::size_t count = file ? std::fread(start, 1, sizeof start, file.get()) : 0;
    return foreignKindOf({start, count});
}

/// The failure is told even where its report cannot be written.
void reportAfterFailure(const Options& options, const Job& job, RunNotes& notes, const std::exception& error)
{
    notes.error = error.what();
    if (options.report.empty()) return;
    try {
        writeReport(options, job, notes);
    } catch (const FileError& second) {
        remark(second.what());
    }
}

}   // namespace

void checkPlaces(const Options& options, const Job& job)
{
    const int height = options.rows ? options.rows->end - options.rows->first : options.height;
    forEachOutput(job, [&](const std::string& output) {
        if (output != standardStream && !mayWriteFile(output))
            throw FileError(output, Text::cannotWrite, errno);
        try {
            if (pictureFormatOf(options, output) == PictureFormat::ombr)
                OmbrFile::checkSize(options.width, height, 0);
        } catch (const OmbrFile::Error&) {
            throw FileError(
                output, Text::cannotWrite,
                filledText(Text::ombrTooLarge, {std::to_string(options.width), std::to_string(height)}));
        }
    });
    if (!options.savedView.empty() && !mayWriteFile(options.savedView))
        throw FileError(options.savedView, Text::cannotWrite, errno);
}

void draw(const Options& options, const Job& job, ConsoleReporter& reporter, RunNotes& notes)
{
    const Bounds bounds = readDrawn(options, job, reporter, notes);
    const ModelPlace& place = bounds.place;
    const ImageSize size{options.width, options.height};
    std::vector<ViewParameters> views;
    for (const ChosenView& choice : options.chosenViews) {
        views.push_back(viewFor(choice, options.changes, bounds.box, place, size, options.quiet));
        notes.addCamera(choice.name, views.back(), place);
    }
    if (!options.savedView.empty()) writeView(options.savedView, views.front(), place);
    notes.viewWritten = !options.savedView.empty();
    if (options.outputs.empty()) return;
    reporter.setStages(Text::preparingStage);
    drawViews(options, job, views, place, reporter, notes);
}

int statusAfter(const Options& options, const Reading& reading)
{
    if (options.failEmpty && reading.model->facetCount() == 0 && reading.model->curveCount() == 0)
        return nothingDrawn;
    if (options.failRepaired && reading.account.repairCount != 0) return repaired;
    return done;
}

void remarkOnKind(const Options& options, const Job& job)
{
    if (job.type != FileType::dxf || options.quiet) return;
    if (const Text kind = foreignKindOfModel(job); kind != Text::none)
        remark(filledText(Text::foreignRemark, {textOf(kind)}));
}

void remarkOnReading(const Options& options, const Job& job)
{
    if (job.type != FileType::dxf || options.rules == ReadingRules::modern || options.quiet) return;
    if (foreignKindOfModel(job) == Text::none) remark(textOf(Text::tryModern));
}

namespace {

/// The limits of a single model hold for this process.
void setLimits(const Options& options)
{
    if (options.maxMemory != 0) limitMemory(options.maxMemory);
    if (options.timeout == 0.0) return;
    watchDeadline([text = filledText(Text::toolRemark, {tooLongText(options, options.jobs.front())})] {
        std::fputs(text.c_str(), stderr);
    });
    setDeadline(options.timeout);
}

}   // namespace

int drawReported(Options& options, ConsoleReporter& reporter)
{
    Job& job = options.jobs.front();
    setLimits(options);
    RunNotes notes;
    try {
        checkPlaces(options, job);
        readViews(options.chosenViews, options.changes, reporter);
        if (job.fromInput()) job.input = readStandardInput();
        draw(options, job, reporter, notes);
    } catch (const std::exception& error) {
        reporter.clear();
        if (dynamic_cast<const BadFile*>(&error)) remarkOnKind(options, job);
        reportAfterFailure(options, job, notes, error);
        throw;
    }
    if (!options.report.empty()) writeReport(options, job, notes);
    return statusAfter(options, notes.reading);
}

}   // namespace belvor
