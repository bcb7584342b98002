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

/// What one run tells of one model file. docs/report-format.md describes the fields.
struct RunReport {
    std::string program;
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

}   // namespace belvor
