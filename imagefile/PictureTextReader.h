#pragma once

#include <optional>
#include <string>

namespace belvor {

/// The hash (PictureTexts) that a picture file (UTF-8 name) holds; none of a file that is not whole, has
/// none, or is of a format without texts. Reads the file through. Throws std::bad_alloc.
std::optional<std::string> hashInPicture(const std::string& path);

}   // namespace belvor
