#pragma once

#include <functional>

namespace belvor {

// A limit of wall-clock time for what this process does. When it is over, the files that are not finished are
// removed and the process ends with the status `timedOut`, wherever it is.

/// Begins to watch. `tell` is called first when the time is over, from a thread of its own; it must let no
/// exception out. Once a process. Throws Win32Error.
void watchDeadline(std::function<void()> tell);
/// The time is over in so many seconds from now; 0 for no limit.
void setDeadline(double seconds) noexcept;

}   // namespace belvor
