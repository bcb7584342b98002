#include "platform/Pipe.h"

#include "platform/Win32Error.h"

#include <algorithm>
#include <cerrno>

#ifdef _WIN32
#include "platform/win32/Handles.h"
#else
#include <fcntl.h>
#include <unistd.h>
#endif

namespace belvor {

#ifdef _WIN32

namespace {

PipeEnd standardPipe(DWORD which) noexcept
{
    return PipeEnd(reinterpret_cast<std::intptr_t>(GetStdHandle(which)));
}

}   // namespace

bool PipeEnd::write(std::string_view bytes) noexcept
{
    while (!bytes.empty()) {
        DWORD written = 0;
        const auto count = static_cast<DWORD>(std::min<std::size_t>(bytes.size(), 1u << 30));
        if (!WriteFile(handleOf(handle), bytes.data(), count, &written, nullptr)) return false;
        bytes.remove_prefix(written);
    }
    return true;
}

std::size_t PipeEnd::readSome(char* into, std::size_t most) noexcept
{
    DWORD got = 0;
    const auto wanted = static_cast<DWORD>(std::min<std::size_t>(most, 1u << 30));
    return ReadFile(handleOf(handle), into, wanted, &got, nullptr) ? got : 0;
}

void PipeEnd::close() noexcept
{
    if (handle != none) CloseHandle(handleOf(std::exchange(handle, none)));
}

std::pair<PipeEnd, PipeEnd> makePipe()
{
    HANDLE reading = nullptr, writing = nullptr;
    if (!CreatePipe(&reading, &writing, nullptr, 0)) throw Win32Error("CreatePipe");
    return {PipeEnd(reinterpret_cast<std::intptr_t>(reading)),
            PipeEnd(reinterpret_cast<std::intptr_t>(writing))};
}

PipeEnd& standardInputPipe()
{
    static PipeEnd* const end = new PipeEnd(standardPipe(STD_INPUT_HANDLE));
    return *end;
}

PipeEnd& standardOutputPipe()
{
    static PipeEnd* const end = new PipeEnd(standardPipe(STD_OUTPUT_HANDLE));
    return *end;
}

#else

bool PipeEnd::write(std::string_view bytes) noexcept
{
    while (!bytes.empty()) {
        const ssize_t count = ::write(static_cast<int>(handle), bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR) return false;
        bytes.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }
    return true;
}

std::size_t PipeEnd::readSome(char* into, std::size_t most) noexcept
{
    ssize_t got = 0;
    while ((got = ::read(static_cast<int>(handle), into, most)) < 0 && errno == EINTR) {}
    return got < 0 ? 0 : static_cast<std::size_t>(got);
}

void PipeEnd::close() noexcept
{
    if (handle != none) ::close(static_cast<int>(std::exchange(handle, none)));
}

std::pair<PipeEnd, PipeEnd> makePipe()
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) throw Win32Error("CreatePipe");
    return {PipeEnd(ends[0]), PipeEnd(ends[1])};
}

PipeEnd& standardInputPipe()
{
    static PipeEnd* const end = new PipeEnd(0);
    return *end;
}

PipeEnd& standardOutputPipe()
{
    static PipeEnd* const end = new PipeEnd(1);
    return *end;
}

#endif

bool PipeEnd::read(char* into, std::size_t count) noexcept
{
    while (count > 0) {
        const std::size_t got = readSome(into, count);
        if (got == 0) return false;
        into += got;
        count -= got;
    }
    return true;
}

}   // namespace belvor
