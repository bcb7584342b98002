#include "readers/ModelFile.h"

#include "errors/BadFile.h"
#include "errors/FileChanged.h"
#include "platform/FileError.h"
#include "platform/FileNames.h"
#include "platform/Files.h"
#include "platform/MappedFile.h"
#include "platform/Workers.h"
#include "readers/Gzip.h"
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
     [](std::string_view bytes, const std::string& name, Reporter& reporter, const ReadingOptions& options,
        Account& account) {
         const unsigned threads = options.threads == 0 ? Workers::usualThreads() : options.threads;
         return Things(bytes, name, reporter, account, threads).takeModel();
     }},
    {FileType::dxf, "dxf", "dxf", Text::dxfFilter, Text::dxfStage, 1, true,
     [](std::string_view bytes, const std::string& name, Reporter& reporter, const ReadingOptions& options,
        Account& account) { return DXF(bytes, name, reporter, options, account).takeModel(); }},
    {FileType::man, "man", "man", Text::manFilter, Text::manStage, 1, false,
     [](std::string_view bytes, const std::string& name, Reporter& reporter, const ReadingOptions&,
        Account&) { return ManFile(bytes, name, reporter).takeModel(); }},
};

/// Says what a mapping of the file would only call an invalid argument.
void checkKind(const std::string& path, FileType type)
{
    std::uint64_t size = 0;
    const FileKind kind = kindOfFile(path, size);
    if (kind == FileKind::other) throw FileError(path, Text::cannotRead, textOf(Text::notARegularFile));
    if (kind == FileKind::regular && size == 0 && type == FileType::dxf)
        throw FileError(path, Text::cannotRead, textOf(Text::fileIsEmpty));
}

constexpr std::string_view packedExtension = "gz";

/// The model of bytes that may be packed.
Handle<Model> readBytes(const ModelFormat& format, std::string_view bytes, bool packed,
                        const std::string& name, Reporter& reporter, const ReadingOptions& options,
                        Account& account)
{
    std::string whole;
    if (packed) {
        whole = unpackGzip(bytes, name, [&] { reporter.check(format.stageCount, 0, 0.0); });
        bytes = whole;
    }
    if (bytes.empty() && format.type == FileType::dxf)
        throw FileError(name, Text::cannotRead, textOf(Text::fileIsEmpty));
    return format.read(bytes, name, reporter, options, account);
}

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

FileType fileTypeOfPacked(std::string_view path) noexcept
{
    if (hasExtension(path, packedExtension)) path.remove_suffix(packedExtension.size() + 1);
    return fileTypeOf(path);
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
    checkKind(path, type);
    MappedFile::takeDamage();   // of a reading that failed otherwise
    Handle<Model> model;
    try {
        const MappedFile file(path, true);
        model = readBytes(*format, file.bytes(), hasExtension(path, packedExtension), path, reporter, options,
                          account);
    } catch (const BadFile&) {
        if (MappedFile::takeDamage()) throw FileChanged(path);   // the fault is not the file's
        throw;
    }
    if (MappedFile::takeDamage()) throw FileChanged(path);
    return model;
}

Handle<Model> readModel(std::string_view bytes, const std::string& name, FileType type, Reporter& reporter,
                        const ReadingOptions& options, Account& account)
{
    const ModelFormat* const format = formatOf(type);
    if (!format) return {};
    return readBytes(*format, bytes, isGzip(bytes), name, reporter, options, account);
}

void checkBounds(const Point<3>& centre, double radius, Account& account)
{
    constexpr double most = 1e75;   // products of such coordinates, which normals are made of, still fit
    double largest = radius;
    for (int axis = 0; axis < 3; ++axis) largest = std::max(largest, std::fabs(centre[axis]));
    if (!(largest <= most)) account.warn(textOf(Text::coordinatesTooFar));
}

Reading readModel(const std::string& path, FileType type, Reporter& reporter, const ReadingOptions& options)
{
    Reading reading;
    reading.model = readModel(path, type, reporter, options, reading.account);
    return reading;
}

}   // namespace belvor
