#include "platform/ChildProcess.h"

#include "platform/Utf16.h"
#include "platform/Win32Error.h"

#include <cerrno>
#include <csignal>
#include <mutex>
#include <string>

#ifdef _WIN32
#include "platform/win32/Handles.h"
#else
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace belvor {

#ifdef _WIN32

namespace {

std::wstring ownPath()
{
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return path;
}

}   // namespace

ChildProcess::ChildProcess(const char* argument)
{
    // Handles that may be inherited would go to every child that is started meanwhile.
    static std::mutex starting;
    const std::lock_guard guard(starting);
    auto [itsInput, ours] = makePipe();
    auto [oursToo, itsOutput] = makePipe();
    SetHandleInformation(handleOf(itsInput.get()), HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
    SetHandleInformation(handleOf(itsOutput.get()), HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = handleOf(itsInput.get());
    start.hStdOutput = handleOf(itsOutput.get());
    start.hStdError = GetStdHandle(STD_ERROR_HANDLE);
    const std::wstring path = ownPath();
    std::wstring line = L'"' + path + L"\" " + toWide(argument);
    PROCESS_INFORMATION made{};
    if (!CreateProcessW(path.c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start,
                        &made))
        throw Win32Error("CreateProcess");
    CloseHandle(made.hThread);
    process = reinterpret_cast<std::intptr_t>(made.hProcess);
    toChild = std::move(ours);
    fromChild = std::move(oursToo);
}

void ChildProcess::kill() noexcept
{
    const std::lock_guard guard(lock);
    if (process) TerminateProcess(handleOf(process), 137);
}

int ChildProcess::wait() noexcept
{
    const auto handle = handleOf(process);
    if (!handle) return status;
    WaitForSingleObject(handle, INFINITE);
    DWORD code = 0;
    GetExitCodeProcess(handle, &code);
    status = code >= 0xC0000000u ? -11 : static_cast<int>(code);
    const std::lock_guard guard(lock);
    CloseHandle(handle);
    process = 0;
    return status;
}

#else

ChildProcess::ChildProcess(const char* argument)
{
    auto [itsInput, ours] = makePipe();
    auto [oursToo, itsOutput] = makePipe();
    posix_spawn_file_actions_t actions;
    if (posix_spawn_file_actions_init(&actions) != 0) throw Win32Error("CreateProcess", ENOMEM);
    int code = posix_spawn_file_actions_adddup2(&actions, static_cast<int>(itsInput.get()), 0);
    if (code == 0) code = posix_spawn_file_actions_adddup2(&actions, static_cast<int>(itsOutput.get()), 1);
    std::string name = "belvor-render", word = argument;
    char* const arguments[] = {name.data(), word.data(), nullptr};
    pid_t made = 0;
    if (code == 0) code = posix_spawn(&made, "/proc/self/exe", &actions, nullptr, arguments, environ);
    posix_spawn_file_actions_destroy(&actions);
    if (code != 0) throw Win32Error("CreateProcess", static_cast<std::uint32_t>(code));
    process = made;
    toChild = std::move(ours);
    fromChild = std::move(oursToo);
}

void ChildProcess::kill() noexcept
{
    const std::lock_guard guard(lock);
    if (process) ::kill(static_cast<pid_t>(process), SIGKILL);
}

int ChildProcess::wait() noexcept
{
    if (!process) return status;
    siginfo_t ended{};   // the number stays taken until kill() cannot use it any more
    while (waitid(P_PID, static_cast<id_t>(process), &ended, WEXITED | WNOWAIT) != 0 && errno == EINTR) {}
    const std::lock_guard guard(lock);
    int code = 0;
    while (waitpid(static_cast<pid_t>(process), &code, 0) < 0 && errno == EINTR) {}
    status = WIFEXITED(code) ? WEXITSTATUS(code) : -WTERMSIG(code);
    process = 0;
    return status;
}

#endif

ChildProcess::~ChildProcess()
{
    closeInput();
    wait();
}

bool ChildProcess::send(std::string_view bytes) noexcept
{
    const std::lock_guard guard(lock);
    return toChild.write(bytes);
}

void ChildProcess::closeInput() noexcept
{
    const std::lock_guard guard(lock);
    toChild.close();
}

}   // namespace belvor
