#include "imagetool/Command.h"

#include "errors/Reporter.h"
#include "platform/FileError.h"
#include "platform/StopSignals.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>

namespace belvor {
namespace {

OmbrReader readerOf(const std::string& path, ByteSource& source)
try {
    return OmbrReader(source);
} catch (const OmbrFault& fault) {
    throw FileError(path, Text::cannotRead,
                    filledText(Text::faultAt, {std::to_string(fault.offset()), fault.what()}));
}

}   // namespace

OpenImage::OpenImage(const std::string& path) : source(path), reader(readerOf(path, source)) {}

namespace {

template <class T>
void copyInto(std::span<const T> from, std::span<T> to)
{
    if (!to.empty()) std::copy(from.begin(), from.end(), to.begin());
}

}   // namespace

void copyRows(OmbrReader& image, ImageWriter& picture)
{
    for (int y = 0; y < image.header().height; ++y) {
        checkForStop();
        image.readRow(y);
        const ImageRow row = picture.row();
        copyInto(image.rgb(), row.rgb);
        copyInto(image.depth(), row.depth);
        copyInto(image.material(), row.material);
        picture.writeRow();
    }
}

void checkForStop()
{
    if (stopSignal() != 0) throw Reporter::Abandoned();
}

void printAnswer(const std::string& text)
{
    if (std::fputs(text.c_str(), stdout) >= 0 && std::fflush(stdout) == 0) return;
    throw FileError(textOf(Text::standardOutput), Text::cannotWrite, errno);
}

}   // namespace belvor
