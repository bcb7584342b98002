// The program: reads models, sets views, draws them into picture files. draw() does it for one model.

#include "cli/belvor_render.h"

#include "cli/ConsoleReporter.h"
#include "cli/Drawing.h"
#include "cli/Failures.h"
#include "cli/Options.h"
#include "cli/Remarks.h"
#include "errors/BadFile.h"
#include "platform/Process.h"

#include <new>
#include <utility>

namespace belvor {

int runCommandLine(int argc, char** argv) noexcept
{
    std::vector<std::string> arguments;
    try {
        arguments = commandLine(argc, argv);
    } catch (...) {
        return tellFailure();
    }
    return runArguments(std::move(arguments));
}

int runArguments(std::vector<std::string> arguments) noexcept
{
    Options options;
    try {
        options = parseOptions(std::move(arguments));
        if (!options.answer.empty()) {
            print(options.answer);
            return done;
        }
        ConsoleReporter reporter(!options.quiet && standardErrorIsTerminal());
        return drawReported(options, options.jobs.front(), reporter);
    } catch (const BadFile&) {
        const int status = tellFailure();
        try {
            remarkOnReading(options, options.jobs.front());
        } catch (const std::bad_alloc&) {   // the failure has been told
        }
        return status;
    } catch (...) {
        return tellFailure();
    }
}

}   // namespace belvor
