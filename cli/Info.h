#pragma once

#include "readers/ModelFile.h"

#include <string>

namespace belvor {

class Reporter;

/// The model described as one JSON object on one line; numbers round-trip and are finite. `file` is UTF-8.
/// Throws Reporter::Abandoned, std::bad_alloc.
std::string describeModel(const std::string& file, FileType type, const Reading& reading, bool lines,
                          Reporter& reporter);

}   // namespace belvor
