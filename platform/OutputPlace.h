#pragma once

#include "platform/OutputFile.h"

#include <string>
#include <string_view>
#include <vector>

namespace belvor {

/// A name that no file has but by intent of somebody who knows it: the first part of `name`, a random
/// word, ".part". Short enough for any file system.
std::string unusedNameFor(std::string_view name);

/// The names in a folder; none of a folder that cannot be read. All UTF-8.
std::vector<std::string> namesIn(const std::string& folder);

/// Deletes the file of that path (UTF-8), beside an output's name, unless a process is writing it.
void removeIfAbandoned(const std::string& path) noexcept;

/// The name of an output file in its folder, and the names beside it; a body for each system.
/// Functions that answer bool leave errno when the answer is false.
class OutputFile::Place {
public:
    /// Follows links and looks at what is there. Throws FileError.
    explicit Place(const std::string& path);
    /// Standard output.
    Place();
    Place(const Place&) = delete;
    Place& operator=(const Place&) = delete;
    /// Deletes the files beside the name.
    ~Place();

    /// Opens the file to write: beside the name, or the device that has it. Null with errno set.
    std::FILE* open();
    /// Gives the written file its name; `keepOlder` keeps the file that had it for giveBack().
    bool takeName(bool keepOlder) noexcept;
    /// Undoes takeName(true).
    void giveBack() noexcept;
    /// The name has been taken for good.
    void settle() noexcept;

    struct System;   ///< What differs from system to system.
    const std::unique_ptr<System> system;
    std::string identity;   ///< As fileIdentity() of a path that has no file yet.
    bool special = false;   ///< Neither to be replaced nor to be deleted.
    bool existed = false, hadContent = false;
    bool taken = false;
};

/// Flushes to the disk, where the file lies on one; false with errno set. `goOn` as for OutputFile::finish().
bool flushToDisk(std::FILE* file, const std::function<void()>& goOn);

}   // namespace belvor
