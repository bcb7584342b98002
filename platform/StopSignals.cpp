#include "platform/StopSignals.h"

#include "platform/OutputFile.h"

#include <atomic>
#include <csignal>
#include <cstdlib>

#ifdef _WIN32
#include "platform/win32/Windows.h"
#else
#include <unistd.h>
#endif

namespace belvor {
namespace {

std::atomic<int> noted{0};
static_assert(std::atomic<int>::is_always_lock_free, "written by the handler of a signal");

#ifdef _WIN32

BOOL WINAPI onConsoleEvent(DWORD event)
{
    int none = 0;
    if ((event == CTRL_C_EVENT || event == CTRL_BREAK_EVENT) && noted.compare_exchange_strong(none, SIGINT))
        return TRUE;
    removeUnfinishedFiles();
    return FALSE;   // the system ends the program
}

#else

void onSignal(int number)
{
    int none = 0;
    if (noted.compare_exchange_strong(none, number)) return;
    removeUnfinishedFiles();
    endBySignal(number);
}

#endif

}   // namespace

int stopSignal() noexcept { return noted; }

void requestStop(int signal) noexcept
{
    int none = 0;
    noted.compare_exchange_strong(none, signal);
}

#ifdef _WIN32

void noteStopSignals() noexcept { SetConsoleCtrlHandler(onConsoleEvent, TRUE); }

void endBySignal(int signal) noexcept { std::_Exit(128 + signal); }

#else

void noteStopSignals() noexcept
{
    std::signal(SIGPIPE, SIG_IGN);
    for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGXFSZ, SIGXCPU}) {
        struct sigaction action {};
        if (sigaction(number, nullptr, &action) != 0 || action.sa_handler == SIG_IGN) continue;
        action = {};
        action.sa_handler = onSignal;   // without SA_RESTART: a call that waits for a pipe gives up
        sigaction(number, &action, nullptr);
    }
}

void endBySignal(int number) noexcept
{
    struct sigaction action {};
    action.sa_handler = SIG_DFL;
    sigaction(number, &action, nullptr);
    sigset_t one;
    sigemptyset(&one);
    sigaddset(&one, number);
    raise(number);
    pthread_sigmask(SIG_UNBLOCK, &one, nullptr);   // it is blocked while its handler runs
    _exit(128 + number);                           // the first process of a container does not end by signals
}

#endif

}   // namespace belvor
