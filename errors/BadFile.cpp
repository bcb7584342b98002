#include "errors/BadFile.h"

#include "resources/Texts.h"

#include <initializer_list>
#include <string_view>
#include <utility>

namespace belvor {
namespace {

/// `format` with its "%s", "%d" and "%s" replaced in order: file names hold percent signs,
/// so they are never used as formats themselves.
std::string filled(std::string_view format, std::initializer_list<std::string_view> arguments)
{
    std::string result;
    auto argument = arguments.begin();
    for (std::size_t i = 0; i < format.size(); ++i) {
        const bool hole = format[i] == '%' && i + 1 < format.size() && argument != arguments.end();
        if (!hole) {
            result += format[i];
            continue;
        }
        result += *argument++;
        ++i;
    }
    return result;
}

}   // namespace

BadFile::BadFile(Code code, std::string file, int line)
    : BadFile(code, textOf(2000 + code), {}, std::move(file), line)
{}

BadFile::BadFile(Code code, std::string argument, std::string file, int line)
    : BadFile(code, textOf(2000 + code), std::move(argument), std::move(file), line)
{}

BadFile::BadFile(Code code, const char* format, std::string argument, std::string file, int line)
    : std::runtime_error(format),
      number(code),
      message(filled(format, {argument})),
      fileName(std::move(file)),
      lineNumber(line),
      text(placed("%s at line %d in %s", "%s in %s"))
{}

std::string BadFile::boxText() const { return placed(textOf(613), textOf(614)); }

std::string BadFile::placed(const char* atLine, const char* inFile) const
{
    if (fileName.empty()) return message;
    if (lineNumber == noLine) return filled(inFile, {message, fileName});
    return filled(atLine, {message, std::to_string(lineNumber), fileName});
}

}   // namespace belvor
