// Reads a model, sets a view, draws it into picture files: the whole road in one function, run().

#include "cli/belvor_render.h"

#include "cli/ConsoleReporter.h"
#include "cli/Info.h"
#include "cli/Options.h"
#include "cli/Remarks.h"
#include "cli/Reporting.h"
#include "errors/BadFile.h"
#include "errors/FileError.h"
#include "errors/Reporter.h"
#include "imagefile/OmbrFile.h"
#include "imagefile/Pictures.h"
#include "platform/Files.h"
#include "platform/Process.h"
#include "platform/SystemError.h"
#include "platform/Win32Error.h"
#include "readers/ForeignFile.h"
#include "readers/ModelFile.h"
#include "render/Frame.h"
#include "render/Outlines.h"
#include "resources/Texts.h"
#include "view/SceneBuilder.h"
#include "view/ViewCommands.h"
#include "view/ViewParameters.h"

#include <cerrno>
#include <cstdio>
#include <memory>
#include <new>
#include <optional>
#include <stdexcept>

namespace belvor {
namespace {

enum ExitStatus {
    done = 0,
    badInput = 1,
    usage = 2,
    fileTrouble = 3,
    noMemory = 4,
    nothingDrawn = 5,
    repaired = 6,
    internalError = 70,
    stopped = 130
};

/// A file of another kind where a parameter file is wanted, or one that does not fit the model: a picture of
/// another view would be a lie.
class BadView : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// What can be found out before a model is read, which may take long.
void checkOutputs(const Options& options)
{
    for (const std::string& output : options.outputs) {
        if (!mayWriteFile(output)) throw FileError(output, Text::cannotWrite, errno);
        try {
            if (pictureFormatOfPath(output) == PictureFormat::ombr)
                OmbrFile::checkSize(options.width, options.height, 0);
        } catch (const OmbrFile::Error&) {
            throw FileError(output, Text::cannotWrite,
                            filledText(Text::ombrTooLarge,
                                       {std::to_string(options.width), std::to_string(options.height)}));
        }
    }
    if (!options.savedView.empty() && !mayWriteFile(options.savedView))
        throw FileError(options.savedView, Text::cannotWrite, errno);
}

/// The bytes of the parameter file that was asked for; empty when none was.
std::string readView(const Options& options, ConsoleReporter& reporter)
{
    std::string bytes;
    if (options.view.empty()) return bytes;
    if (!readViewFile(options.view, bytes, [&reporter] { reporter.check(1, 0, 0.0); }))
        throw FileError(options.view, Text::cannotRead, errno);
    if (!isViewFile(bytes)) throw BadView(filledText(Text::notAViewFile, {options.view}));
    return bytes;
}

ViewParameters viewFor(const Options& options, const std::string& bytes, const ModelPlace& place,
                       const ImageSize& size)
{
    if (options.view.empty()) return wholeModel(freshView(), size);
    ViewParameters view;
    std::optional<ViewFileFault> fault;
    if (!view.parse(bytes, place.centre, place.radius, &fault))
        throw BadView(filledText(Text::notAViewFile, {options.view}));
    if (!view.finite()) throw BadView(filledText(Text::viewTooLarge, {options.view}));
    if (fault && !options.quiet) remark(viewFaultText(options.view, *fault));
    return view;
}

void writeView(const std::string& path, const ViewParameters& view, const ModelPlace& place)
{
    if (!view.finiteInModel(place.centre, place.radius))
        throw BadView(filledText(Text::viewNotWritable, {path}));
    if (!view.write(path, place.centre, place.radius)) throw FileError(path, Text::cannotWrite, errno);
}

void print(const std::string& text)
{
    if (std::fputs(text.c_str(), stdout) >= 0 && std::fflush(stdout) == 0) return;
    throw FileError(textOf(Text::standardOutput), Text::cannotWrite, errno);
}

void run(const Options& options, ConsoleReporter& reporter, RunNotes& notes)
{
    checkOutputs(options);
    const std::string viewBytes = readView(options, reporter);

    ReadingOptions how;
    how.log = options.dxfLog;
    how.rules = options.rules;
    reporter.setStages(formatOf(options.type)->firstStage);
    Reading& reading = notes.reading;
    reading.model = readModel(options.model, options.type, reporter, how, reading.account);
    notes.stepDone("read");
    const Handle<Model>& model = reading.model;
    reporter.clear();
    if (reading.account.logFailure != 0)
        throw FileError(options.model + ".log", Text::cannotWrite, reading.account.logFailure);
    ModelPlace place;
    model->bounds(place.centre, place.radius);
    checkBounds(place.centre, place.radius, reading.account);
    if (!options.quiet) remarkOn(options.model, reading);
    if (options.info) print(describeModel(options.model, options.type, reading, reporter) + '\n');

    const ImageSize size{options.width, options.height};
    const ViewParameters view = viewFor(options, viewBytes, place, size);
    notes.setCamera(view, place);
    if (!options.savedView.empty()) writeView(options.savedView, view, place);
    notes.viewWritten = !options.savedView.empty();
    if (options.outputs.empty()) return;

    const Scene scene = buildScene(view, place, size, options.width, options.height);
    std::vector<PictureTarget> targets;
    for (const std::string& output : options.outputs)
        targets.push_back({output, pictureFormatOfPath(output).value()});
    const Handle<Pictures> pictures =
        makeHandle<Pictures>(targets, *model, scene.camera, options.width, options.height);
    pictures->setBackground(options.background);
    LineStyle lines = options.lines;
    std::optional<Outlines> outlines;
    if (options.edges) lines.outlines = &outlines.emplace(*model);
    reporter.setStages(Text::preparingStage);
    Sharing sharing;
    if (options.threads > 0) sharing.threads = options.threads;
    Frame(sharing).render(*model, *scene.camera, *scene.lights, *pictures, reporter, lines);
    pictures->commit(reporter);
    notes.outputsWritten = true;
    notes.stepDone("render");
}

/// What a file of another kind is; Text::none when that is not known.
Text foreignKindOfFile(const std::string& path)
{
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(openFile(path, "rb"), std::fclose);
    char start[16];
    const std::size_t count = file ? std::fread(start, 1, sizeof start, file.get()) : 0;
    return foreignKindOf({start, count});
}

/// Tells a user who has named a file of another kind so.
void remarkOnKind(const std::string& path)
{
    if (const Text kind = foreignKindOfFile(path); kind != Text::none)
        remark(filledText(Text::foreignRemark, {textOf(kind)}));
}

/// Tells a user whose drawing the strict reading refuses that the other one may read it.
void remarkOnReading(const Options& options)
{
    if (options.type != FileType::dxf || options.rules == ReadingRules::modern || options.quiet) return;
    if (foreignKindOfFile(options.model) == Text::none) remark(textOf(Text::tryModern));
}

/// How a run that did all it was asked for ends, for scripts that want to know more.
ExitStatus statusOf(const Options& options, const Reading& reading)
{
    if (options.failEmpty && reading.model->facetCount() == 0) return nothingDrawn;
    if (options.failRepaired && reading.account.repairCount != 0) return repaired;
    return done;
}

/// The failure is told even where its report cannot be written.
void reportAfterFailure(const Options& options, RunNotes& notes, const std::exception& error)
{
    notes.error = error.what();
    if (options.report.empty()) return;
    try {
        writeReport(options, notes);
    } catch (const FileError& second) {
        remark(second.what());
    }
}

/// The run and its report, which is written after a failure too.
ExitStatus runReported(const Options& options, ConsoleReporter& reporter)
{
    RunNotes notes;
    try {
        run(options, reporter, notes);
    } catch (const std::exception& error) {
        reporter.clear();
        if (dynamic_cast<const BadFile*>(&error) && options.type == FileType::dxf && !options.quiet)
            remarkOnKind(options.model);
        reportAfterFailure(options, notes, error);
        throw;
    }
    if (!options.report.empty()) writeReport(options, notes);
    return statusOf(options, notes.reading);
}

int report(ExitStatus status, const char* text) noexcept
{
    std::fputs("belvor-render: ", stderr);
    std::fputs(text, stderr);
    std::fputc('\n', stderr);
    return status;
}

int reportFile(bool memory, const char* text) noexcept
{
    return memory ? report(noMemory, textOf(Text::outOfMemory)) : report(fileTrouble, text);
}

/// Tells about the exception that is being handled and answers its exit status.
int reportFailure() noexcept
{
    try {
        throw;
    } catch (const Usage& wrong) {
        std::fputs(wrong.what(), stderr);
        return usage;
    } catch (const Reporter::Abandoned&) {
        return report(stopped, textOf(Text::abandoned));
    } catch (const BadFile& fault) {
        return report(badInput, fault.what());
    } catch (const BadView& fault) {
        return report(badInput, fault.what());
    } catch (const std::bad_alloc&) {
        return report(noMemory, textOf(Text::outOfMemory));
    } catch (const std::length_error&) {   // more than a container could ever hold
        return report(noMemory, textOf(Text::outOfMemory));
    } catch (const FileError& error) {
        return reportFile(error.code() == ENOMEM, error.what());
    } catch (const Win32Error& error) {
        return reportFile(isOutOfMemory(error.errorCode()), error.what());
    } catch (const std::exception& error) {
        std::fprintf(stderr, "belvor-render: ");
        std::fprintf(stderr, textOf(Text::internalError), error.what());
        std::fputc('\n', stderr);
        return internalError;
    } catch (...) {
        return report(internalError, textOf(Text::unknownError));
    }
}

}   // namespace

int runCommandLine(int argc, char** argv) noexcept
{
    Options options;
    try {
        options = parseOptions(commandLine(argc, argv));
        if (!options.answer.empty()) {
            print(options.answer);
            return done;
        }
        ConsoleReporter reporter(!options.quiet && standardErrorIsTerminal());
        return runReported(options, reporter);
    } catch (const BadFile&) {
        const int status = reportFailure();
        try {
            remarkOnReading(options);
        } catch (const std::bad_alloc&) {   // the failure has been told
        }
        return status;
    } catch (...) {
        return reportFailure();
    }
}

}   // namespace belvor
