#include "cli/ModelList.h"

#include "cli/Options.h"
#include "platform/FileError.h"
#include "platform/Files.h"
#include "platform/Pipe.h"

#include <algorithm>
#include <cerrno>
#include <string_view>

namespace belvor {
namespace {

std::string listBytes(const std::string& path)
{
    std::string bytes;
    if (path != "-") {
        if (!readWholeFile(path, bytes)) throw FileError(path, Text::cannotRead, errno);
        return bytes;
    }
    char block[65536];
    while (const std::size_t count = standardInputPipe().readSome(block, sizeof block))
        bytes.append(block, count);
    return bytes;
}

}   // namespace

std::vector<std::string> readList(const Options& options)
{
    std::vector<std::string> models;
    if (options.list.empty()) return models;
    const std::string bytes = listBytes(options.list);
    const char end = options.nullSeparated ? '\0' : '\n';
    for (std::string_view rest = bytes; !rest.empty();) {
        std::string_view line = rest.substr(0, rest.find(end));
        rest.remove_prefix(std::min(rest.size(), line.size() + 1));
        if (!options.nullSeparated && line.ends_with('\r')) line.remove_suffix(1);
        if (!line.empty()) models.emplace_back(line);
    }
    return models;
}

}   // namespace belvor
