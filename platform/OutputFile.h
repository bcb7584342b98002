#pragma once

#include "platform/FileError.h"

#include <cstdio>
#include <functional>
#include <memory>
#include <span>
#include <string>

namespace belvor {

/// A file that is written beside its name and takes the name when it is whole. Until then, and
/// whatever goes wrong, the name keeps the file that it has.
///
/// A name that is a link is followed: the link stays, and its target is replaced. A file that is
/// replaced passes its mode, its group and, where the system allows it, its owner on; a
/// write-protected one is refused. Devices and pipes are written into as they are: there is
/// nothing to keep. The name beside is random and must not exist yet, so that neither another process
/// nor a planted link can have it. Used by one thread at a time.
class OutputFile {
public:
    /// This process is writing a file of that name already.
    class Busy : public FileError {
    public:
        explicit Busy(const std::string& path);
    };

    /// Begins the file (`path` is UTF-8). Throws FileError, Busy.
    explicit OutputFile(const std::string& path);
    /// Writes to this process's standard output, whatever that is, as to a pipe. `shownName` stands in
    /// errors.
    struct StandardOutput {};
    OutputFile(StandardOutput, const std::string& shownName);
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    /// Deletes what has not taken its name.
    ~OutputFile();

    /// Where to write; null once the file is finished. Owned by this object.
    std::FILE* stream() const noexcept { return file; }
    const std::string& path() const noexcept { return name; }
    /// Whether stream() can be written at any position; a pipe or a device takes bytes in their order only.
    bool isSeekable() const noexcept;
    /// Whether a file that is not empty had the name when this one was begun.
    bool replacesContent() const noexcept;

    /// Flushes the file to the disk and closes it. Does nothing when that is done. `goOn` is called every few
    /// MB that reach the disk where the system tells (Linux), and else once; what it throws is passed on, and
    /// the file can then only be deleted. Throws FileError.
    void finish(const std::function<void()>& goOn = [] {});
    /// Finishes the file and gives it its name. Throws FileError.
    void commit();
    /// The same for several: each name has its old file or its new one at any moment, and where one
    /// name cannot be taken, all keep their old files. Throws FileError.
    static void commit(std::span<OutputFile* const> files);

private:
    class Place;
    class Claim;
    OutputFile(std::string shownName, std::unique_ptr<Place> where);

    const std::string name;
    const std::unique_ptr<Place> place;
    const std::unique_ptr<char[]> buffer;   // of the stream, until it is closed
    std::unique_ptr<Claim> claim;           // to the name; none once it is taken
    std::FILE* file = nullptr;
    bool finished = false;
};

/// What tells files apart: equal for two paths (UTF-8) of one file, however they are spelt and
/// whatever links lead to it. There need be no such file; then its folder and name count.
std::string fileIdentity(const std::string& path);

/// Deletes what processes that are gone have left beside the names of these output files (UTF-8), which may
/// be many and in many folders. Files that a process is writing stay. Throws std::bad_alloc.
void removeAbandonedFiles(std::span<const std::string> outputs);

/// Deletes the files beside their names that this process has not finished. May be called from
/// a signal's handler; the process must end then.
void removeUnfinishedFiles() noexcept;

}   // namespace belvor
