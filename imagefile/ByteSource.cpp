#include "imagefile/ByteSource.h"

#include "platform/FileError.h"
#include "platform/Files.h"

#include <cerrno>
#include <cstring>

namespace belvor {

FileSource::FileSource(const std::string& path) : name(path), file(nullptr, std::fclose)
{
    const FileKind kind = kindOfFile(path, bytes);
    if (kind == FileKind::none) throw FileError(path, Text::cannotRead, errno);
    if (kind == FileKind::folder) throw FileError(path, Text::cannotRead, EISDIR);
    if (kind == FileKind::other) throw FileError(path, Text::cannotRead, textOf(Text::notARegularFile));
    file.reset(openFile(path, "rb"));
    if (!file) throw FileError(path, Text::cannotRead, errno);
}

void FileSource::read(std::uint64_t at, void* to, std::size_t count)
{
    if (at != position && !seekFile(file.get(), static_cast<long long>(at)))
        throw FileError(name, Text::cannotRead, errno);
    if (std::fread(to, 1, count, file.get()) != count) {
        if (std::ferror(file.get()) != 0) throw FileError(name, Text::cannotRead, errno);
        throw FileError(name, Text::cannotRead, textOf(Text::fileChanged));   // shorter than it was
    }
    position = at + count;
}

void MemorySource::read(std::uint64_t at, void* to, std::size_t count)
{
    if (count != 0) std::memcpy(to, bytes.data() + at, count);
}

}   // namespace belvor
