#include "cli/Failures.h"

#include "cli/Options.h"
#include "cli/Views.h"
#include "errors/BadFile.h"
#include "errors/Reporter.h"
#include "platform/FileError.h"
#include "platform/SystemError.h"
#include "platform/Win32Error.h"

#include <cerrno>
#include <charconv>
#include <cstdio>
#include <new>
#include <stdexcept>

namespace belvor {
namespace {

void put(std::string* text, const char* piece) noexcept
{
    if (!text) {
        std::fputs(piece, stderr);
        return;
    }
    try {
        *text += piece;
    } catch (const std::bad_alloc&) {}   // the status tells it
}

int tell(std::string* text, ExitStatus status, const char* message) noexcept
{
    put(text, "belvor-render: ");
    put(text, message);
    put(text, "\n");
    return status;
}

int tellOfFile(std::string* text, bool memory, const char* message) noexcept
{
    return memory ? tell(text, noMemory, textOf(Text::outOfMemory)) : tell(text, fileTrouble, message);
}

int tellInternal(std::string* text, const char* what) noexcept
{
    char message[512];
    std::snprintf(message, sizeof message, textOf(Text::internalError), what);
    return tell(text, internalError, message);
}

}   // namespace

std::string tooLongText(const Options& options, const Job& job)
{
    char seconds[32];
    const char* const end = std::to_chars(seconds, seconds + sizeof seconds, options.timeout).ptr;
    return filledText(Text::tookTooLong,
                      {job.shownModel(), std::string_view(seconds, static_cast<std::size_t>(end - seconds))});
}

int tellFailure(std::string* text) noexcept
{
    try {
        throw;
    } catch (const Usage& wrong) {
        put(text, wrong.what());
        return usage;
    } catch (const Reporter::Abandoned&) {
        return tell(text, stopped, textOf(Text::abandoned));
    } catch (const BadFile& fault) {
        return tell(text, badInput, fault.what());
    } catch (const BadView& fault) {
        return tell(text, badInput, fault.what());
    } catch (const std::bad_alloc&) {
        return tell(text, noMemory, textOf(Text::outOfMemory));
    } catch (const std::length_error&) {   // more than a container could ever hold
        return tell(text, noMemory, textOf(Text::outOfMemory));
    } catch (const FileError& error) {
        return tellOfFile(text, error.code() == ENOMEM, error.what());
    } catch (const Win32Error& error) {
        return tellOfFile(text, isOutOfMemory(error.errorCode()), error.what());
    } catch (const std::exception& error) {
        return tellInternal(text, error.what());
    } catch (...) {
        return tell(text, internalError, textOf(Text::unknownError));
    }
}

}   // namespace belvor
