#include "errors/BadFile.h"

#include "resources/Texts.h"

#include <utility>

namespace belvor {
namespace {

const char* textOf(BadFile::Code code) noexcept { return textOf(static_cast<Text>(2000 + code)); }

}   // namespace

BadFile::BadFile(Code code, std::string file, int line)
    : BadFile(code, textOf(code), {}, std::move(file), line)
{}

BadFile::BadFile(Code code, std::string argument, std::string file, int line)
    : BadFile(code, textOf(code), std::move(argument), std::move(file), line)
{}

BadFile::BadFile(Code code, const char* format, std::string argument, std::string file, int line)
    : std::runtime_error(format),
      number(code),
      message(filledFormat(format, {argument})),
      fileName(std::move(file)),
      lineNumber(line),
      text(placed("%s at line %d in %s", "%s in %s"))
{}

std::string BadFile::boxText() const
{
    return placed(textOf(Text::placeWithLine), textOf(Text::placeWithoutLine));
}

std::string BadFile::placed(const char* atLine, const char* inFile) const
{
    if (fileName.empty()) return message;
    if (lineNumber == noLine) return filledFormat(inFile, {message, fileName});
    return filledFormat(atLine, {message, std::to_string(lineNumber), fileName});
}

}   // namespace belvor
