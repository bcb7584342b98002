#pragma once

namespace belvor {

/// From now on the signals that ask a program to end (interrupt, terminate, hang-up, a limit of
/// file size or processor time) are noted instead of ending it; one that is ignored stays
/// ignored. A second one removes the unfinished files (OutputFile) and ends the program at once.
/// A pipe that nobody reads any more becomes an error of the write. On Windows: Ctrl-C and
/// Ctrl-Break are noted; closing the console or the system removes the unfinished files and ends.
void noteStopSignals() noexcept;

/// The first such signal that has come; 0 for none.
int stopSignal() noexcept;

/// From now on stopSignal() is `signal`, unless it is one already.
void requestStop(int signal) noexcept;

/// Ends the program as `signal` does when it is not noted; where that is not possible, with the
/// exit status 128 + signal.
[[noreturn]] void endBySignal(int signal) noexcept;

}   // namespace belvor
