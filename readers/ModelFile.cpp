#include "readers/ModelFile.h"

#include "platform/FileNames.h"
#include "readers/dxf/DXF.h"
#include "readers/man/ManFile.h"
#include "readers/things/Things.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace belvor {
namespace {

constexpr ModelFormat formats[] = {
    {FileType::things, "things", "thf", Text::thingsFilter, Text::thingsStage, 0, false,
     [](const std::string& path, Reporter& reporter, const ReadingOptions&, Account& account) {
         return Things(path, reporter, account).takeModel();
     }},
    {FileType::dxf, "dxf", "dxf", Text::dxfFilter, Text::dxfStage, 1, true,
     [](const std::string& path, Reporter& reporter, const ReadingOptions& options, Account& account) {
         return DXF(path, reporter, options, account).takeModel();
     }},
    {FileType::man, "man", "man", Text::manFilter, Text::manStage, 1, false,
     [](const std::string& path, Reporter& reporter, const ReadingOptions&, Account&) {
         return ManFile(path, reporter).takeModel();
     }},
};

}   // namespace

std::span<const ModelFormat> modelFormats() noexcept { return formats; }

const ModelFormat* formatOf(FileType type) noexcept
{
    for (const ModelFormat& format : formats)
        if (format.type == type) return &format;
    return nullptr;
}

FileType fileTypeOf(std::string_view path) noexcept
{
    for (const ModelFormat& format : formats)
        if (hasExtension(path, format.extension)) return format.type;
    return FileType::unknown;
}

const char* nameOf(FileType type) noexcept
{
    const ModelFormat* const format = formatOf(type);
    return format ? format->name : "";
}

Handle<Model> readModel(const std::string& path, FileType type, Reporter& reporter,
                        const ReadingOptions& options, Account& account)
{
    const ModelFormat* const format = formatOf(type);
    if (!format) return {};
    return format->read(path, reporter, options, account);
}

void checkBounds(const Point<3>& centre, double radius, Account& account)
{
    constexpr double most = std::numeric_limits<double>::max() / 1e10;
    double largest = radius;
    for (int axis = 0; axis < 3; ++axis) largest = std::max(largest, std::fabs(centre[axis]));
    if (largest > most) account.warn(textOf(Text::coordinatesTooFar));
}

Reading readModel(const std::string& path, FileType type, Reporter& reporter, const ReadingOptions& options)
{
    Reading reading;
    reading.model = readModel(path, type, reporter, options, reading.account);
    return reading;
}

}   // namespace belvor
