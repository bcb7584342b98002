#include "cli/Worker.h"

#include "cli/ConsoleReporter.h"
#include "cli/Deadline.h"
#include "cli/Drawing.h"
#include "cli/Failures.h"
#include "cli/Messages.h"
#include "cli/PictureHash.h"
#include "cli/Remarks.h"
#include "errors/BadFile.h"
#include "platform/FileError.h"
#include "platform/Files.h"
#include "platform/Process.h"
#include "platform/StopSignals.h"
#include "platform/Thread.h"
#include "scene/Material.h"

#include <cerrno>
#include <charconv>
#include <csignal>
#include <deque>
#include <mutex>

namespace belvor {
namespace {

using Texts = std::vector<std::string>;

/// The jobs on standard input, read ahead by a thread of their own: so their end is seen during a render.
class Jobs {
public:
    Jobs()
    {
        startThread([this] {
            try {
                while (std::optional<Texts> next = receive(standardInputPipe())) {
                    const std::lock_guard guard(lock);
                    waiting.push_back(std::move(*next));
                    changed.notifyOne();
                }
            } catch (const std::bad_alloc&) {}   // as if the input had ended
            const std::lock_guard guard(lock);
            ended = true;
            if (busy) requestStop(SIGTERM);
            changed.notifyOne();
        });
    }

    /// The next one; none when there are no more.
    std::optional<Texts> next()
    {
        const std::lock_guard guard(lock);
        busy = false;
        while (waiting.empty() && !ended) changed.wait(lock);
        if (waiting.empty() || stopSignal() != 0) return {};
        Texts job = std::move(waiting.front());
        waiting.pop_front();
        busy = true;
        return job;
    }

private:
    Lock lock;
    Condition changed;
    std::deque<Texts> waiting;
    bool ended = false, busy = false;
};

template <class Number>
Number numberIn(const std::string& text)
{
    Number number{};
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

EarlierFiles earlierIn(const Texts& job)
{
    EarlierFiles earlier;
    for (std::size_t i = 2; i + 2 < job.size(); i += 3)
        earlier[job[i]] = {job[i + 1], numberIn<std::uint64_t>(job[i + 2])};
    return earlier;
}

void makeFolders(const Job& job)
{
    forEachOutput(job, [](const std::string& output) {
        if (!makeFoldersFor(output)) throw FileError(output, Text::cannotWrite, errno);
    });
}

/// The picture files of a job, or the finding that they are there.
void drawUnlessThere(const Options& options, const Job& job, const EarlierFiles& earlier, RunNotes& notes)
{
    notes.file = digestOf(job.model);
    if (!notes.file->sha256.empty()) notes.hashes = pictureHashes(options, job, notes.file->sha256);
    notes.unchanged =
        options.skipExisting && !notes.hashes.empty() && picturesAreThere(job, notes.hashes, earlier);
    if (notes.unchanged) return;
    makeFolders(job);
    checkPlaces(options, job);
    MaterialSequence::ofProgram().reset();   // as in a run of this model alone
    ConsoleReporter reporter(false);
    draw(options, job, reporter, notes);
    notes.status = statusAfter(options, notes.reading);
}

/// What goes wrong with a model is told and answered; it ends nothing.
Texts answerTo(const Options& options, const Job& job, const EarlierFiles& earlier)
{
    RunNotes notes;
    std::string told;
    collectRemarks(&told);
    try {
        drawUnlessThere(options, job, earlier, notes);
    } catch (const std::exception& error) {
        const bool badFile = dynamic_cast<const BadFile*>(&error) != nullptr;
        if (badFile) remarkOnKind(options, job);
        notes.error = error.what();
        notes.status = tellFailure(&told);
        if (badFile) remarkOnReading(options, job);
    }
    const bool overLimit = notes.status == noMemory && options.maxMemory != 0;
    if (overLimit) {
        notes.status = tooMuchMemory;
        notes.error = filledText(Text::tookTooMuch, {job.model});
        told = filledText(Text::toolRemark, {notes.error});
    }
    const bool pictures = notes.status == done || notes.status == nothingDrawn || notes.status == repaired;
    const std::string line = options.report.empty() ? "" : reportOn(options, job, notes);
    return {std::to_string(notes.status),
            notes.unchanged ? "skipped"
            : pictures      ? "drawn"
                            : "failed",
            told, line, ""};
}

int work()
{
    const std::optional<Texts> arguments = receive(standardInputPipe()), views = receive(standardInputPipe());
    if (!arguments || !views) return usage;
    Options options = parseWorkerOptions(*arguments);
    for (std::size_t i = 0; i < options.chosenViews.size() && i < views->size(); ++i)
        options.chosenViews[i].bytes = (*views)[i];
    if (options.maxMemory != 0) limitMemory(options.maxMemory);
    if (options.timeout != 0.0) watchDeadline([] {});   // the process that asked tells it
    static Jobs* const jobs = new Jobs;                 // its thread never ends
    bool fresh = true;
    while (const std::optional<Texts> asked = jobs->next()) {
        if (asked->size() < 2) return usage;
        const Job job = jobOf(options, numberIn<std::size_t>(asked->front()), (*asked)[1]);
        setDeadline(options.timeout);
        Texts answer = answerTo(options, job, earlierIn(*asked));
        setDeadline(0.0);
        if (stopSignal() != 0) return stopped;
        const int status = numberIn<int>(answer.front());
        if (!fresh && (status == noMemory || status == tooMuchMemory)) answer.back() = "again";
        fresh = false;
        if (!standardOutputPipe().write(packed(answer))) return fileTrouble;
    }
    return stopSignal() != 0 ? stopped : done;
}

}   // namespace

int runWorker() noexcept
{
    try {
        return work();
    } catch (...) {
        return tellFailure();
    }
}

}   // namespace belvor
