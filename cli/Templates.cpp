#include "cli/Templates.h"

#include "cli/Arguments.h"
#include "platform/FileNames.h"

namespace belvor {
namespace {

std::string_view folderOf(std::string_view path) noexcept
{
    const std::size_t length = path.size() - fileName(path).size();
    if (length == 0) return ".";
    return path.substr(0, length == 1 ? 1 : length - 1);
}

std::string_view modelNameOf(std::string_view path) noexcept
{
    const bool packed = hasExtension(path, "gz");
    return nameWithoutEnding(packed ? path.substr(0, path.size() - 3) : path);
}

std::string padded(std::size_t number)
{
    const std::string digits = std::to_string(number);
    return digits.size() < 4 ? std::string(4 - digits.size(), '0') + digits : digits;
}

}   // namespace

bool hasViewWord(std::string_view pattern) noexcept
{
    for (std::size_t at = pattern.find('{'); at != pattern.npos; at = pattern.find('{', at + 1)) {
        if (pattern.substr(at, 6) == "{view}") return true;
        if (pattern.substr(at, 2) == "{{") ++at;
    }
    return false;
}

std::string expandedName(const std::string& pattern, const TemplateValues& values)
{
    std::string name;
    for (std::size_t at = 0; at < pattern.size(); ++at) {
        if (pattern[at] != '{') name += pattern[at];
        else if (pattern.compare(at, 2, "{{") == 0) name += pattern[++at];
        else {
            const std::size_t end = pattern.find('}', at);
            if (end == pattern.npos) refuse(Text::openBrace, {pattern});
            const std::string_view word(pattern.data() + at + 1, end - at - 1);
            if (word == "name") name += modelNameOf(values.model);
            else if (word == "dir") name += folderOf(values.model);
            else if (word == "view") name += values.view;
            else if (word == "n") name += padded(values.number);
            else refuse(Text::unknownWord, {pattern, word});
            at = end;
        }
    }
    return name;
}

}   // namespace belvor
