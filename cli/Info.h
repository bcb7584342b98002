#pragma once

#include "readers/ModelFile.h"

#include <string>

namespace belvor {

/// The model described as one JSON object on one line; numbers round-trip. `file` is UTF-8.
std::string describeModel(const std::string& file, FileType type, const Reading& reading);

}   // namespace belvor
