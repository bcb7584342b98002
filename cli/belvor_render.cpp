// The program: reads models, sets views, draws them into picture files. draw() does it for one model.

#include "cli/belvor_render.h"

#include "cli/Batch.h"
#include "cli/ConsoleReporter.h"
#include "cli/Drawing.h"
#include "cli/Failures.h"
#include "cli/Options.h"
#include "cli/Remarks.h"
#include "cli/Worker.h"
#include "errors/BadFile.h"
#include "platform/Process.h"

#include <new>
#include <utility>

namespace belvor {
namespace {

int runOptions(Options& options)
{
    if (!options.answer.empty()) {
        print(options.answer);
        return done;
    }
    ConsoleReporter reporter(!options.quiet && standardErrorIsTerminal());
    return options.batch ? drawAll(options, reporter) : drawReported(options, reporter);
}

/// Memory that ran out is the option's fault where it set the limit.
int statusWithin(const Options& options, int status) noexcept
{
    return status == noMemory && options.maxMemory != 0 && !options.batch ? tooMuchMemory : status;
}

}   // namespace

int runCommandLine(int argc, char** argv) noexcept
{
    std::vector<std::string> arguments;
    try {
        arguments = commandLine(argc, argv);
    } catch (...) {
        return tellFailure();
    }
    if (arguments.size() == 2 && arguments[1] == workerArgument) return runWorker();
    return runArguments(std::move(arguments));
}

int runArguments(std::vector<std::string> arguments) noexcept
{
    Options options;
    try {
        options = parseOptions(std::move(arguments));
        return runOptions(options);
    } catch (const BadFile&) {
        const int status = tellFailure();
        try {
            remarkOnReading(options, options.jobs.front());
        } catch (const std::bad_alloc&) {   // the failure has been told
        }
        return status;
    } catch (...) {
        return statusWithin(options, tellFailure());
    }
}

}   // namespace belvor
