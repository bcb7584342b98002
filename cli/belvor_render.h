#pragma once

namespace belvor {

/// The program behind its main(), with main's arguments. Answers the exit status; failures are told on
/// standard error.
int runCommandLine(int argc, char** argv) noexcept;

}   // namespace belvor
