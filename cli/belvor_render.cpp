// Reads a model, sets a view, draws it into picture files: the whole road in one function.

#include "cli/ConsoleReporter.h"
#include "cli/Info.h"
#include "cli/Options.h"
#include "cli/Pictures.h"
#include "errors/BadFile.h"
#include "errors/Reporter.h"
#include "imagefile/OmbrFile.h"
#include "platform/Files.h"
#include "platform/Process.h"
#include "platform/StopSignals.h"
#include "readers/ModelFile.h"
#include "resources/Texts.h"
#include "view/SceneBuilder.h"
#include "view/ViewCommands.h"
#include "view/ViewParameters.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <new>
#include <stdexcept>
#include <vector>

namespace belvor {
namespace {

enum ExitStatus { done = 0, badInput = 1, usage = 2, fileTrouble = 3, noMemory = 4, stopped = 130 };

/// A file of another kind where a parameter file is wanted: a picture of another view would be a lie.
class BadView : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

ViewParameters viewFor(const Options& options, const ModelPlace& place, const ImageSize& size)
{
    if (options.view.empty()) return wholeModel(freshView(), size);
    std::string bytes;
    if (!readWholeFile(options.view, bytes))
        throw std::runtime_error(options.view + ": " + std::strerror(errno));
    ViewParameters view;
    if (!view.parse(bytes, place.centre, place.radius))
        throw BadView(options.view + ": not a view parameters file");
    if (!view.finite()) throw BadView(options.view + ": holds a number too large for this model");
    return view;
}

void writeView(const std::string& path, const ViewParameters& view, const ModelPlace& place)
{
    if (!view.write(path, place.centre, place.radius))
        throw std::runtime_error(path + ": " + std::strerror(errno));
}

void printLine(const std::string& text)
{
    if (std::fputs((text + '\n').c_str(), stdout) >= 0 && std::fflush(stdout) == 0) return;
    const int code = errno;
    throw std::runtime_error(std::string("standard output: ") + std::strerror(code));
}

/// Tells a user why something is missing from the picture.
void remark(const std::string& file, const Reading& reading)
{
    constexpr std::size_t mostLines = 20;
    for (const std::string& warning : reading.account.warnings)
        std::fprintf(stderr, "belvor-render: %s: %s\n", file.c_str(), warning.c_str());
    if (reading.model->facetCount() == 0)
        std::fprintf(stderr, "belvor-render: %s has no surfaces to draw\n", file.c_str());
    std::vector<NotDrawn> skipped = reading.account.notDrawn;
    std::stable_sort(skipped.begin(), skipped.end(),
                     [](const auto& a, const auto& b) { return a.count > b.count; });
    for (std::size_t i = 0; i < skipped.size() && i < mostLines; ++i)
        std::fprintf(stderr, "belvor-render: not drawn: %llu %s: %s\n",
                     static_cast<unsigned long long>(skipped[i].count), skipped[i].type.c_str(),
                     skipped[i].reason.c_str());
    if (skipped.size() > mostLines)
        std::fprintf(stderr, "belvor-render: and %llu more kinds: see --info\n",
                     static_cast<unsigned long long>(skipped.size() - mostLines));
}

void run(const Options& options, ConsoleReporter& reporter)
{
    ReadingOptions how;
    how.log = options.dxfLog;
    reporter.setStages(formatOf(options.type)->firstStage);
    Reading reading = readModel(options.model, options.type, reporter, how);
    const Handle<Model>& model = reading.model;
    reporter.clear();
    if (reading.account.logFailure != 0)
        throw std::runtime_error(options.model + ".log: " + std::strerror(reading.account.logFailure));
    ModelPlace place;
    model->bounds(place.centre, place.radius);
    checkBounds(place.centre, place.radius, reading.account);
    if (!options.quiet) remark(options.model, reading);
    if (options.info) printLine(describeModel(options.model, options.type, reading));

    const ImageSize size{options.width, options.height};
    const ViewParameters view = viewFor(options, place, size);
    if (!options.savedView.empty()) writeView(options.savedView, view, place);
    if (options.outputs.empty()) return;

    const Scene scene = buildScene(view, place, size, options.width, options.height);
    const Handle<Pictures> pictures =
        makeHandle<Pictures>(options.outputs, model, scene.camera, options.width, options.height);
    reporter.setStages(Text::preparingStage);
    model->render(*scene.camera, *scene.lights, *pictures, reporter);
    pictures->commit(reporter);
}

int report(ConsoleReporter& reporter, ExitStatus status, const char* text)
{
    reporter.clear();
    std::fprintf(stderr, "belvor-render: %s\n", text);
    return status;
}

int runReported(const Options& options)
{
    ConsoleReporter reporter(!options.quiet && standardErrorIsTerminal());
    try {
        run(options, reporter);
        return done;
    } catch (const Reporter::Abandoned& abandoned) {
        return report(reporter, stopped, abandoned.what());
    } catch (const BadFile& fault) {
        return report(reporter, badInput, fault.what());
    } catch (const BadView& fault) {
        return report(reporter, badInput, fault.what());
    } catch (const std::bad_alloc&) {
        return report(reporter, noMemory, textOf(Text::outOfMemory));
    } catch (const std::exception& error) {   // PictureError, Win32Error
        return report(reporter, fileTrouble, error.what());
    }
}

}   // namespace
}   // namespace belvor

int main(int argc, char** argv)
{
    belvor::noteStopSignals();
    belvor::refuseMemoryBeyondMachine();
    try {
        const int status = belvor::runReported(belvor::parseOptions(belvor::commandLine(argc, argv)));
        if (status != belvor::done && belvor::stopSignal() != 0) {
            std::fflush(stdout);
            belvor::endBySignal(belvor::stopSignal());
        }
        return status;
    } catch (const belvor::Usage& usage) {
        std::fputs(usage.what(), usage.exitStatus() == 0 ? stdout : stderr);
        return usage.exitStatus();
    }
}
