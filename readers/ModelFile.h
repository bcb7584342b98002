#pragma once

#include "platform/Handle.h"
#include "scene/Model.h"

#include <string>
#include <string_view>

namespace belvor {

class Reporter;

/// The kinds of model files. The numbers are those of a model-load request.
enum class FileType { unknown = 0, man = 1, dxf = 2, things = 3 };

/// The kind by the three letters behind the last dot of the path's last part, in any case.
FileType fileTypeOf(std::string_view path) noexcept;

/// "man", "dxf" or "things"; empty for unknown.
const char* nameOf(FileType type) noexcept;

/// Reads the whole file (`path` is UTF-8); none for an unknown type. Throws Win32Error,
/// BadFile, Reporter::Abandoned, std::bad_alloc.
Handle<Model> readModel(const std::string& path, FileType type, Reporter& reporter);

}   // namespace belvor
