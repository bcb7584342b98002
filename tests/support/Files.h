#pragma once

#include "platform/Files.h"
#include "platform/Process.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <stdexcept>
#include <string>

namespace belvor::test {

/// A file of its own in the temporary folder, deleted at the end of the test.
class TempFile {
public:
    explicit TempFile(const std::string& name, const std::string& bytes = {})
        : filePath(temporaryNameFor((std::filesystem::temp_directory_path() / "belvor-").string()) + "-"
                   + name)
    {
        write(bytes);
    }
    TempFile(const TempFile&) = delete;
    TempFile& operator=(const TempFile&) = delete;
    ~TempFile() { removeFile(filePath); }

    void write(const std::string& bytes) const
    {
        std::FILE* const file = openFile(filePath, "wb");
        if (!file || std::fwrite(bytes.data(), 1, bytes.size(), file) != bytes.size()
            || std::fclose(file) != 0)
            throw std::runtime_error("cannot write " + filePath);
    }

    const std::string& path() const noexcept { return filePath; }

    std::string bytes() const
    {
        std::string content;
        if (!readWholeFile(filePath, content)) throw std::runtime_error("cannot read " + filePath);
        return content;
    }

private:
    std::string filePath;
};

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
        std::ofstream(folder / name, std::ios::binary) << bytes;
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

}   // namespace belvor::test
