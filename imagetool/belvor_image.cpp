// Looks into Ombr files: one command a file of this folder.

#include "errors/Reporter.h"
#include "imagetool/Command.h"
#include "platform/FileError.h"
#include "platform/Process.h"
#include "platform/StopSignals.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <new>

namespace belvor {
namespace {

enum ExitStatus { usage = 2, fileTrouble = 3, noMemory = 4, internalError = 70, stopped = 130 };

struct CommandRow {
    const char* name;
    Answer (*run)(const Words&);
};

constexpr CommandRow commands[] = {
    {"info", showInfo},         {"verify", verifyImage}, {"convert", convertImage},
    {"compare", compareImages}, {"at", showPoints},      {"join", joinBands},
};

int tell(int status, const std::string& text)
{
    std::fprintf(stderr, "belvor-image: %s\n", text.c_str());
    return status;
}

/// Tells about the exception that is being handled and answers the exit status.
int tellFailure() noexcept
{
    try {
        throw;
    } catch (const WrongUse& wrong) {
        return tell(usage, wrong.what());
    } catch (const RenderFailed& failure) {   // has been told
        return failure.status;
    } catch (const Reporter::Abandoned&) {
        return tell(stopped, textOf(Text::abandoned));
    } catch (const std::bad_alloc&) {
        std::fprintf(stderr, "belvor-image: %s\n", textOf(Text::outOfMemory));
        return noMemory;
    } catch (const FileError& error) {
        return tell(error.code() == ENOMEM ? noMemory : fileTrouble, error.what());
    } catch (const std::exception& error) {
        std::fprintf(stderr, "belvor-image: %s\n", error.what());
        return internalError;
    }
}

int run(Words words)
{
    if (words.size() < 2) throw WrongUse(Text::noCommand, {});
    const std::string name = words[1];
    const auto asks = [&](const char* option) {
        return std::find(words.begin(), words.end(), option) != words.end();
    };
    if (asks("--help") || name == "-h") return printAnswer(textOf(Text::imageToolHelp)), 0;
    if (name == "--version" || name == "-V") return printAnswer(textOf(Text::imageToolVersion)), 0;
    const auto row = std::find_if(std::begin(commands), std::end(commands),
                                  [&name](const CommandRow& each) { return name == each.name; });
    if (row == std::end(commands)) throw WrongUse(Text::unknownImageCommand, {name});
    words.erase(words.begin(), words.begin() + 2);
    return static_cast<int>(row->run(words));
}

}   // namespace
}   // namespace belvor

int main(int argc, char** argv)
{
    belvor::useSystemLibrariesOnly();
    belvor::writeUtf8ToConsole();
    belvor::noteStopSignals();
    belvor::refuseMemoryBeyondMachine();
    int status = 0;
    try {
        status = belvor::run(belvor::commandLine(argc, argv));
    } catch (...) {
        status = belvor::tellFailure();
    }
    if (status != 0 && belvor::stopSignal() != 0) belvor::endBySignal(belvor::stopSignal());
    return status;
}
