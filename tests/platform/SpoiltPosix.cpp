#include "tests/platform/Spoilt.h"

#include <filesystem>

void belvor::test::spoil(const std::string& path, std::string_view)
{
    std::filesystem::resize_file(path, 8192);
}
