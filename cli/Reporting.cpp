#include "cli/Reporting.h"

#include "cli/PictureHash.h"
#include "platform/FileError.h"
#include "platform/Files.h"
#include "platform/OutputFile.h"
#include "report/Sha256.h"
#include "resources/Texts.h"

#include <cerrno>
#include <cstdio>

namespace belvor {
namespace {

void write(const std::string& text, std::FILE* to, const std::string& path)
{
    errno = 0;
    if (std::fwrite(text.data(), 1, text.size(), to) != text.size() || std::fflush(to) != 0)
        throw FileError(path, Text::cannotWrite, errno);
}

/// What is known of a model's bytes.
FileDigest digestOfModel(const Job& job, const RunNotes& notes)
{
    if (notes.file) return *notes.file;
    if (!job.fromInput()) return digestOf(job.model);
    FileDigest digest{job.model, 0, {}};
    if (job.input) digest = {job.model, job.input->size(), sha256Of(*job.input)};
    return digest;
}

/// What has gone to standard output has no file to look at.
FileDigest digestOfPicture(const std::string& output)
{
    return output == standardStream ? FileDigest{output, 0, {}} : digestOf(output);
}

/// Of pictures that were there already only the size is looked at.
FileDigest sizeOf(const std::string& path)
{
    FileDigest file{path, 0, {}};
    kindOfFile(path, file.bytes);
    return file;
}

}   // namespace

void RunNotes::stepDone(std::string name)
{
    const auto now = std::chrono::steady_clock::now();
    steps.emplace_back(std::move(name), std::chrono::duration<double>(now - latest).count());
    latest = now;
}

double RunNotes::seconds() const noexcept
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - beginning).count();
}

void RunNotes::addCamera(const std::string& name, const ViewParameters& view, const ModelPlace& place)
{
    const UniformTransform<3> toModel = place.viewToModel();
    cameras.push_back({name, view.parallel, toModel(view.eye), toModel(view.lookAt), view.zoom});
}

std::string reportOn(const Options& options, const Job& job, const RunNotes& notes)
{
    RunReport report;
    report.program = textOf(Text::version);
    if (options.batch)
        report.batch = BatchLine{job.number,      notes.status,   notes.error, hashOfAll(notes.hashes),
                                 notes.unchanged, notes.seconds()};
    report.file = digestOfModel(job, notes);
    report.reading = options.rules == ReadingRules::modern ? "modern" : "strict";
    report.model = notes.reading.model.get();
    report.account = &notes.reading.account;
    report.error = notes.error;
    report.cameras = notes.cameras;
    if (notes.outputsWritten)
        forEachOutput(job, [&](const std::string& output) {
            report.outputs.push_back(notes.unchanged ? sizeOf(output) : digestOfPicture(output));
        });
    if (notes.viewWritten) report.outputs.push_back(digestOf(options.savedView));
    if (options.timing) report.timing = notes.steps;
    return toJson(report);
}

void writeReport(const Options& options, const Job& job, const RunNotes& notes)
{
    const std::string text = reportOn(options, job, notes) + '\n';
    if (options.report == "-") return write(text, stdout, textOf(Text::standardOutput));
    OutputFile file(options.report);
    write(text, file.stream(), options.report);
    file.commit();
}

}   // namespace belvor
