#pragma once

#include "platform/Pipe.h"
#include "platform/Thread.h"

#include <cstdint>
#include <string_view>

namespace belvor {

/// A second process of this program. Its standard input and output are pipes to this one; standard error is
/// shared. One thread sends and receives; any thread may close the input and kill.
class ChildProcess {
public:
    /// Starts this program with a single argument (ASCII letters and hyphens). Throws Win32Error.
    explicit ChildProcess(const char* argument);
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    /// Closes the input and waits for the end.
    ~ChildProcess();

    /// False when the child does not read any more.
    bool send(std::string_view bytes) noexcept;
    /// The pipe that the child's standard output is.
    PipeEnd& output() noexcept { return fromChild; }
    /// Tells the child, by the end of its input, to end soon.
    void closeInput() noexcept;
    void kill() noexcept;

    /// Waits for the end. The exit status, or the negative number of the signal that ended the child; on
    /// Windows the number of an exception is such a signal, 11.
    int wait() noexcept;

private:
    Lock lock;   // of toChild and process
    PipeEnd toChild, fromChild;
    std::intptr_t process = 0;
    int status = 0;
};

}   // namespace belvor
