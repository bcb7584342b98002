#pragma once

#include <string>
#include <vector>

namespace belvor {

/// The program behind its main(), with main's arguments. Answers the exit status; failures are told on
/// standard error.
int runCommandLine(int argc, char** argv) noexcept;

/// The same for words in UTF-8, the program's name first.
int runArguments(std::vector<std::string> arguments) noexcept;

}   // namespace belvor
