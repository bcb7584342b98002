#include "platform/win32/Windows.h"
#include "tests/platform/Spoilt.h"

// No mapped file can be shortened here. A network share that is gone fails like a view without access.
void belvor::test::spoil(const std::string&, std::string_view bytes)
{
    DWORD former = 0;
    VirtualProtect(const_cast<char*>(bytes.data()) + 8192, 4096, PAGE_NOACCESS, &former);
}
