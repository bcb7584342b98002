#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace belvor {

/// The kinds of picture files that a render can be written to.
enum class PictureFormat { ombr, png, exr, tiff, npy, pfm, svg };

/// By the ending of a path (".omb", ".png", ".exr", ".tif", ".tiff", ".npy", ".pfm", ".svg"), in upper or
/// lower case.
std::optional<PictureFormat> pictureFormatOfPath(std::string_view path);
/// By its name, which is the ending without the dot, in upper or lower case.
std::optional<PictureFormat> pictureFormatNamed(std::string_view name);

}   // namespace belvor
