#pragma once

#include "account/Account.h"
#include "scene/Model.h"

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace belvor {

/// A file by its bytes.
struct FileDigest {
    std::string name;   ///< As the user gave it, UTF-8.
    std::uint64_t bytes = 0;
    std::string sha256;   ///< 64 hexadecimal digits; empty: the file could not be read.
};

/// The digest of a whole file (UTF-8 name), which is read again. Without a sha256 when it is no
/// regular file or cannot be read. Throws std::bad_alloc.
FileDigest digestOf(const std::string& path);

/// From where a picture was taken, in model units.
struct ReportCamera {
    std::string view;   ///< Its name.
    bool parallel = false;
    Point<3> eye, lookAt;
    double zoom = 0.0;   ///< Tangent of half the zoom angle.
};

/// What a run of many models tells of each besides.
struct BatchLine {
    std::size_t number = 0;   ///< Of the model in the call, from 1.
    int status = 0;           ///< The exit status of a run of this model alone.
    std::string message;      ///< Why it failed; empty: it did not.
    std::string hash;         ///< Of all that the pictures depend on; empty where it is not known.
    bool unchanged = false;   ///< The pictures were there already.
    double seconds = 0.0;     ///< That the model took; told with the timing.
};

/// What one run tells of one model file. docs/report-format.md describes the fields.
struct RunReport {
    std::string program;
    std::optional<BatchLine> batch;
    FileDigest file;
    std::string reading;                ///< "strict" or "modern".
    const Model* model = nullptr;       ///< Null after a refusal.
    const Account* account = nullptr;   ///< Null when the file could not be opened.
    std::string error;                  ///< Empty: none.
    std::vector<ReportCamera> cameras;
    std::vector<FileDigest> outputs;
    std::optional<std::vector<std::pair<std::string, double>>> timing;   ///< Seconds by step.
};

/// The name of a reason as the report has it: "layer frozen".
const char* nameOf(SkipReason reason) noexcept;

/// The report as one JSON object on one line, without a line end, in UTF-8. The same report gives
/// the same bytes; numbers round-trip, and those that are not finite are null. Text that is not UTF-8 has
/// U+FFFD for what is none.
std::string toJson(const RunReport& report);

/// A picture that an earlier run has told of.
struct EarlierPicture {
    std::string name, hash;
    std::uint64_t bytes;
};

/// The pictures that a line of a run of many models tells of; none of a text that is no such line.
std::vector<EarlierPicture> picturesInReport(const std::string& line);

}   // namespace belvor
