#pragma once

#include <string>

namespace belvor::test {

/// Makes a mapped file unreadable from byte 8192 on, at least for 4096 bytes. One body for each system.
void spoil(const std::string& path, std::string_view bytes);

}   // namespace belvor::test
