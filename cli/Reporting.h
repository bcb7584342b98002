#pragma once

#include "cli/Options.h"
#include "readers/common/Reading.h"
#include "report/RunReport.h"
#include "view/SceneBuilder.h"
#include "view/ViewParameters.h"

#include <chrono>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace belvor {

/// What a run of the tool has come to so far: all that its report tells.
class RunNotes {
public:
    /// The steps after the pictures have their names must not run out of memory.
    RunNotes() { steps.reserve(8); }

    /// A step that took from the end of the one before until now.
    void stepDone(std::string name);
    void addCamera(const std::string& name, const ViewParameters& view, const ModelPlace& place);

    Reading reading;
    std::vector<ReportCamera> cameras;
    std::string error;   ///< Why the run failed; empty: it did not.
    bool outputsWritten = false, viewWritten = false;
    std::vector<std::pair<std::string, double>> steps;   ///< Seconds.
    std::optional<FileDigest> file;                      ///< The model file, where somebody has asked.
    std::vector<std::string> hashes;                     ///< By view: of all that its pictures depend on.
    bool unchanged = false;                              ///< The pictures were there already.
    int status = 0;                                      ///< As the program would end.
    double seconds() const noexcept;                     ///< Since the beginning.

private:
    const std::chrono::steady_clock::time_point beginning = std::chrono::steady_clock::now();
    std::chrono::steady_clock::time_point latest = std::chrono::steady_clock::now();
};

/// The report of the run, one line without its end.
std::string reportOn(const Options& options, const Job& job, const RunNotes& notes);

/// Writes the report where the options ask for it: a file, or standard output for "-". Throws FileError.
void writeReport(const Options& options, const Job& job, const RunNotes& notes);

}   // namespace belvor
