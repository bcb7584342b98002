#pragma once

#include "platform/Files.h"
#include "platform/Process.h"

#include <filesystem>
#include <fstream>
#include <map>
#include <stdexcept>
#include <string>

namespace belvor::test {

/// A folder of its own in `parent`, deleted with all that it holds at the end of the test.
class TempFolder {
public:
    explicit TempFolder(const std::filesystem::path& parent = std::filesystem::temp_directory_path())
        : folder(temporaryNameFor((parent / "belvor-folder").string()))
    {
        create_directory(folder);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    ~TempFolder()
    {
        std::error_code ignored;
        remove_all(folder, ignored);
    }
    const std::filesystem::path& path() const noexcept { return folder; }
    std::string in(const std::string& name) const { return (folder / name).string(); }
    /// Writes a file of the folder; its path.
    std::string write(const std::string& name, const std::string& bytes) const
    {
        if (!(std::ofstream(folder / name, std::ios::binary) << bytes).flush())
            throw std::runtime_error("cannot write " + in(name));
        return in(name);
    }
    /// The bytes of every file by name; "(folder)" for a folder.
    std::map<std::string, std::string> contents() const
    {
        std::map<std::string, std::string> files;
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            std::string bytes = "(folder)";
            if (!entry.is_directory()) readWholeFile(entry.path().string(), bytes);
            files[entry.path().filename().string()] = bytes;
        }
        return files;
    }

private:
    std::filesystem::path folder;
};

/// A file in a folder of its own, deleted at the end of the test.
class TempFile {
public:
    explicit TempFile(const std::string& name, const std::string& content = {})
        : filePath(folder.write(name, content))
    {}
    const std::string& path() const noexcept { return filePath; }
    void write(const std::string& content) const
    {
        folder.write(std::filesystem::path(filePath).filename().string(), content);
    }
    std::string bytes() const
    {
        std::string content;
        if (!readWholeFile(filePath, content)) throw std::runtime_error("cannot read " + filePath);
        return content;
    }

private:
    const TempFolder folder;
    const std::string filePath;
};

}   // namespace belvor::test
