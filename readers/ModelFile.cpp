#include "readers/ModelFile.h"

#include "readers/dxf/DXF.h"
#include "readers/man/ManFile.h"
#include "readers/things/Things.h"

namespace belvor {
namespace {

bool isLetters(std::string_view text, const char (&letters)[4])
{
    for (std::size_t i = 0; i < 3; ++i)
        if ((text[i] | 0x20) != letters[i]) return false;
    return true;
}

}   // namespace

FileType fileTypeOf(std::string_view path) noexcept
{
    const std::size_t part = path.find_last_of("/\\");
    if (part != std::string_view::npos) path.remove_prefix(part + 1);
    const std::size_t dot = path.rfind('.');
    if (dot == std::string_view::npos || path.size() - dot != 4) return FileType::unknown;
    const std::string_view extension = path.substr(dot + 1);
    if (isLetters(extension, "thf")) return FileType::things;
    if (isLetters(extension, "dxf")) return FileType::dxf;
    if (isLetters(extension, "man")) return FileType::man;
    return FileType::unknown;
}

const char* nameOf(FileType type) noexcept
{
    switch (type) {
    case FileType::man: return "man";
    case FileType::dxf: return "dxf";
    case FileType::things: return "things";
    case FileType::unknown: break;
    }
    return "";
}

Handle<Model> readModel(const std::string& path, FileType type, Reporter& reporter)
{
    switch (type) {
    case FileType::things: return makeHandle<Things>(path, reporter);
    case FileType::man: return makeHandle<ManFile>(path, reporter);
    case FileType::dxf: return makeHandle<DXF>(path, reporter);
    case FileType::unknown: break;
    }
    return {};
}

}   // namespace belvor
