#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace belvor {

/// The command line of this process, UTF-8, the program's name first. `argc` and `argv` are
/// main's; on Windows they are not used, since they know the code page only.
std::vector<std::string> commandLine(int argc, char** argv);

/// From now on the system's own folder is the only one that libraries are loaded from by name:
/// one that lies beside the program, as in a folder of downloads, is not. The first call of a
/// program; does nothing on other systems than Windows.
void useSystemLibrariesOnly() noexcept;

/// From now on what is written to a console is taken as UTF-8, until the program ends. Does nothing on other
/// systems than Windows.
void writeUtf8ToConsole() noexcept;

/// Whether somebody is watching standard error.
bool standardErrorIsTerminal() noexcept;

/// From now on, memory is refused to this process (std::bad_alloc) before it takes more than
/// nine tenths of what the machine has or its control group grants: a system that grants more than it has
/// would swap and stop responding instead. Does nothing where the system refuses by itself.
void refuseMemoryBeyondMachine() noexcept;

/// From now on, memory is refused to this process before it takes more than `bytes`, where that is less than
/// what the limits before allow. False where the system offers no such limit.
bool limitMemory(std::uint64_t bytes) noexcept;

/// The value of an environment variable; empty when there is none.
std::string environmentValue(const char* name);

/// A path in the same folder with a random name that begins like that of `path`.
std::string temporaryNameFor(const std::string& path);

}   // namespace belvor
