#include "platform/Process.h"

#ifdef _WIN32
#include "platform/Utf16.h"
#include "platform/win32/Windows.h"

#include <io.h>
#include <process.h>
#include <shellapi.h>
#else
#include <unistd.h>
#endif

namespace belvor {

#ifdef _WIN32

std::vector<std::string> commandLine(int, char**)
{
    std::vector<std::string> arguments;
    int count = 0;
    wchar_t** const wide = CommandLineToArgvW(GetCommandLineW(), &count);
    for (int i = 0; wide && i < count; ++i) arguments.push_back(toUtf8(wide[i]));
    LocalFree(wide);
    return arguments;
}

bool standardErrorIsTerminal() noexcept { return _isatty(2) != 0; }

static int processNumber() { return _getpid(); }

#else

std::vector<std::string> commandLine(int argc, char** argv) { return {argv, argv + argc}; }

bool standardErrorIsTerminal() noexcept { return isatty(2) != 0; }

static int processNumber() { return getpid(); }

#endif

std::string temporaryNameFor(const std::string& path) { return path + "." + std::to_string(processNumber()) + ".part"; }

}   // namespace belvor
