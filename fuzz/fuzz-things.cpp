#include "account/Account.h"
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
        Account account;
        const std::string_view bytes(reinterpret_cast<const char*>(data), size);
        const Handle<Model> model = Things(bytes, "fuzz.thf", silent, account).takeModel();
        drawSmall(*model);
    } catch (const BadFile&) {}
    return 0;
}
