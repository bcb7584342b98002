#pragma once

#include "resources/Texts.h"

#include <string_view>

namespace belvor {

/// What a file with these first bytes is when it is none of the formats that are read here: the text that
/// names its kind, or Text::none when the bytes tell nothing.
Text foreignKindOf(std::string_view bytes) noexcept;

}   // namespace belvor
