#pragma once

#include "cli/Options.h"
#include "cli/PictureHash.h"
#include "platform/OutputFile.h"

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace belvor {

/// How one model of a call ended.
struct Result {
    enum class Kind { drawn, skipped, failed };
    int status = 0;
    Kind kind = Kind::failed;
    std::string told;   ///< For standard error.
    std::string line;   ///< Of the report; empty without one.
};

/// What comes of the models of a call, told in their order: each as soon as it and all before it have ended.
/// Any thread.
class Results {
public:
    /// With --skip-existing reads the lines of the report file that is there. Throws FileError.
    explicit Results(const Options& options);

    /// Throws FileError when it cannot be told.
    void add(std::size_t number, Result result);
    /// The result of a job whose process has ended for that reason.
    Result failed(const Job& job, int status, const std::string& why) const;
    /// Adds to `texts` what earlier runs tell of the job's pictures: name, hash of all views, bytes.
    void addEarlier(const Job& job, std::vector<std::string>& texts) const;

    /// After the last one: tells the counts and completes the report. Throws FileError.
    void finish();
    int status() const noexcept { return largest; }

private:
    void tell(const Result& result);
    void writeLine(const Result& result);
    void readEarlier(const std::string& path);

    const Options& options;
    EarlierFiles earlier;
    bool tornEnd = false;                                    // the report's last line has no end
    std::unique_ptr<OutputFile> whole;                       // a report that begins anew
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> added;   // one that is added to

    std::mutex lock;   // of all below
    std::map<std::size_t, Result> waiting;
    std::size_t next = 1;
    std::size_t counts[3] = {};
    int largest = 0;
};

}   // namespace belvor
