#pragma once

#include <string>

namespace belvor {

/// From here on a fault of the program leaves a minidump and a text in the user's folder for data of
/// programs, in Calderwood\Belvor, and a box says where. Nothing is sent anywhere. `version` is the
/// program's, ASCII.
void reportCrashes(const char* version) noexcept;

}   // namespace belvor
