#include "cli/belvor_render.h"
#include "platform/Process.h"
#include "platform/StopSignals.h"

#include <cstdio>

int main(int argc, char** argv)
{
    belvor::useSystemLibrariesOnly();
    belvor::writeUtf8ToConsole();
    belvor::noteStopSignals();
    belvor::refuseMemoryBeyondMachine();
    const int status = belvor::runCommandLine(argc, argv);
    if (status != 0 && belvor::stopSignal() != 0) {
        std::fflush(stdout);
        belvor::endBySignal(belvor::stopSignal());
    }
    return status;
}
