#pragma once

#include "platform/Pipe.h"

#include <optional>
#include <string>
#include <vector>

namespace belvor {

// What the program and its worker processes say to each other: lists of texts.

std::string packed(const std::vector<std::string>& texts);
/// The next list; none when the pipe has ended. Throws std::bad_alloc.
std::optional<std::vector<std::string>> receive(PipeEnd& from);

}   // namespace belvor
