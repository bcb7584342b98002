#include "cli/BatchResults.h"

#include "cli/Remarks.h"
#include "cli/Reporting.h"
#include "platform/FileError.h"
#include "platform/Files.h"
#include "report/RunReport.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <string_view>

namespace belvor {

Results::Results(const Options& given) : options(given), added(nullptr, std::fclose)
{
    const std::string& path = options.report;
    if (path.empty() || path == "-") return;
    if (options.skipExisting) {
        readEarlier(path);
        errno = 0;
        added.reset(openFile(path, "ab"));
        if (!added || (tornEnd && std::fputc('\n', added.get()) == EOF))
            throw FileError(path, Text::cannotWrite, errno);
        return;
    }
    whole = std::make_unique<OutputFile>(path);
}

void Results::readEarlier(const std::string& path)
{
    std::uint64_t size = 0;
    if (kindOfFile(path, size) == FileKind::none) return;
    std::string bytes;
    if (!readWholeFile(path, bytes)) throw FileError(path, Text::cannotRead, errno);
    tornEnd = !bytes.empty() && bytes.back() != '\n';
    for (std::string_view rest = bytes; !rest.empty();) {
        const std::string_view line = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(rest.size(), line.size() + 1));
        for (EarlierPicture& picture : picturesInReport(std::string(line)))
            earlier[picture.name] = {std::move(picture.hash), picture.bytes};
    }
}

void Results::addEarlier(const Job& job, std::vector<std::string>& texts) const
{
    forEachOutput(job, [&](const std::string& output) {
        if (const auto found = earlier.find(output); found != earlier.end())
            texts.insert(texts.end(), {output, found->second.hash, std::to_string(found->second.bytes)});
    });
}

Result Results::failed(const Job& job, int status, const std::string& why) const
{
    RunNotes notes;
    notes.status = status;
    notes.error = why;
    return {status, Result::Kind::failed, filledText(Text::toolRemark, {why}),
            options.report.empty() ? "" : reportOn(options, job, notes)};
}

void Results::add(std::size_t number, Result result)
{
    const std::lock_guard guard(lock);
    waiting.emplace(number, std::move(result));
    for (auto first = waiting.find(next); first != waiting.end(); first = waiting.find(next)) {
        const Result told = std::move(first->second);
        waiting.erase(first);
        ++next;
        tell(told);
    }
}

void Results::tell(const Result& result)
{
    ++counts[static_cast<std::size_t>(result.kind)];
    largest = std::max(largest, result.status);
    std::fputs(result.told.c_str(), stderr);
    if (!result.line.empty()) writeLine(result);
}

void Results::writeLine(const Result& result)
{
    const std::string line = result.line + '\n';
    if (options.report == "-") return print(line);
    // A model that was passed over has its line there already, or its pictures tell it.
    if (added && result.kind == Result::Kind::skipped) return;
    std::FILE* const file = added ? added.get() : whole->stream();
    errno = 0;
    if (std::fwrite(line.data(), 1, line.size(), file) != line.size() || (added && std::fflush(file) != 0))
        throw FileError(options.report, Text::cannotWrite, errno);
}

void Results::finish()
{
    const std::lock_guard guard(lock);
    for (const auto& [number, result] : waiting) tell(result);   // behind a model that was not begun
    waiting.clear();
    if (whole) whole->commit();
    if (options.quiet) return;
    std::fputs(filledText(Text::batchCounts, {std::to_string(options.jobs.size()), std::to_string(counts[0]),
                                              std::to_string(counts[1]), std::to_string(counts[2])})
                   .c_str(),
               stderr);
}

}   // namespace belvor
