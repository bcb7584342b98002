#pragma once

#include "platform/Files.h"
#include "platform/Process.h"

#include <cstdio>
#include <filesystem>
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
        std::FILE* const file = openFile(filePath, "wb");
        if (!file || std::fwrite(bytes.data(), 1, bytes.size(), file) != bytes.size()
            || std::fclose(file) != 0)
            throw std::runtime_error("cannot write " + filePath);
    }
    TempFile(const TempFile&) = delete;
    TempFile& operator=(const TempFile&) = delete;
    ~TempFile() { removeFile(filePath); }

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

}   // namespace belvor::test
