#include "imagetool/Command.h"

#include "errors/Reporter.h"
#include "platform/FileError.h"
#include "platform/StopSignals.h"

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
