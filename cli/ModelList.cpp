#include "cli/ModelList.h"

#include "cli/Options.h"
#include "errors/Reporter.h"
#include "platform/FileError.h"
#include "platform/Files.h"
#include "platform/StopSignals.h"

#include <algorithm>
#include <cerrno>
#include <string_view>

namespace belvor {

std::string readStandardInput()
{
    std::string bytes;
    const bool whole = readStandardInputWhile(bytes, [](const std::string&) { return stopSignal() == 0; });
    if (stopSignal() != 0) throw Reporter::Abandoned();
    if (!whole) throw FileError(textOf(Text::standardInput), Text::cannotRead, errno);
    return bytes;
}

namespace {

std::string listBytes(const std::string& path)
{
    if (path == standardStream) return readStandardInput();
    std::string bytes;
    if (!readWholeFile(path, bytes)) throw FileError(path, Text::cannotRead, errno);
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
