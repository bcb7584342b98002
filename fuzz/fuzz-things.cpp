#include "errors/BadFile.h"
#include "fuzz/DrawSmall.h"
#include "readers/things/Things.h"

#include <cstddef>
#include <cstdint>

/// Things files: read or refused with a BadFile; what was read has bounds and draws.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace belvor;
    SilentReporter silent;
    try {
        const Handle<Things> model(
            new Things({reinterpret_cast<const char*>(data), size}, "fuzz.thf", silent));
        drawSmall(*model);
    } catch (const BadFile&) {}
    return 0;
}
