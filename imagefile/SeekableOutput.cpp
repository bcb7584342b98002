#include "imagefile/SeekableOutput.h"

#include "platform/Files.h"

#include <cerrno>

namespace belvor {

void writeTo(OutputFile& output, const void* bytes, std::size_t count)
{
    if (count != 0 && std::fwrite(bytes, 1, count, output.stream()) != count)
        throw FileError(output.path(), Text::cannotWrite, errno);
}

SeekableOutput::SeekableOutput(OutputFile& target)
    : output(target),
      scratch(target.isSeekable() ? nullptr : openScratchFile(), std::fclose),
      file(target.isSeekable() ? target.stream() : scratch.get())
{
    if (!file) fail();
}

void SeekableOutput::fail() const { throw FileError(output.path(), Text::cannotWrite, errno); }

void SeekableOutput::write(const void* bytes, std::size_t count)
{
    if (count != 0 && std::fwrite(bytes, 1, count, file) != count) fail();
}

void SeekableOutput::seek(long long position)
{
    if (!seekFile(file, position)) fail();
}

void SeekableOutput::finish()
{
    if (!scratch) return;
    seek(0);
    char block[1u << 16];
    while (const std::size_t count = std::fread(block, 1, sizeof block, file)) writeTo(output, block, count);
    if (std::ferror(file) != 0) fail();
}

}   // namespace belvor
