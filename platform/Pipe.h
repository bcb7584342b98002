#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

namespace belvor {

/// One end of a pipe between processes, closed with the object. Two threads may use it at a time when one of
/// them only closes nothing: reading and writing are calls of the system.
class PipeEnd {
public:
    PipeEnd() = default;
    /// Takes a descriptor, or a handle on Windows, over.
    explicit PipeEnd(std::intptr_t descriptor) noexcept : handle(descriptor) {}
    PipeEnd(PipeEnd&& other) noexcept : handle(std::exchange(other.handle, none)) {}
    PipeEnd& operator=(PipeEnd&& other) noexcept
    {
        std::swap(handle, other.handle);
        return *this;
    }
    ~PipeEnd() { close(); }

    /// False when nobody reads any more.
    bool write(std::string_view bytes) noexcept;
    /// Waits for bytes and reads some, `most` at most; 0 when the pipe has ended or cannot be read.
    std::size_t readSome(char* into, std::size_t most) noexcept;
    /// Waits for as many bytes; false when the pipe ends before.
    bool read(char* into, std::size_t count) noexcept;
    void close() noexcept;
    std::intptr_t get() const noexcept { return handle; }

private:
    static constexpr std::intptr_t none = -1;
    std::intptr_t handle = none;
};

/// Two ends of a new pipe, which no child process inherits: first the one to read from. Throws Win32Error.
std::pair<PipeEnd, PipeEnd> makePipe();

/// The standard input and output of this process as pipes. They are not closed with the object.
PipeEnd& standardInputPipe();
PipeEnd& standardOutputPipe();

}   // namespace belvor
