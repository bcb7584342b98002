#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace belvor {

/// Bytes that are read at any position.
class ByteSource {
public:
    ByteSource() = default;
    ByteSource(const ByteSource&) = delete;
    ByteSource& operator=(const ByteSource&) = delete;
    virtual ~ByteSource() = default;
    virtual std::uint64_t size() const noexcept = 0;
    /// `at` + `count` lie within size(). Throws FileError.
    virtual void read(std::uint64_t at, void* to, std::size_t count) = 0;
};

/// A regular file.
class FileSource : public ByteSource {
public:
    /// `path` is UTF-8. Throws FileError.
    explicit FileSource(const std::string& path);
    std::uint64_t size() const noexcept override { return bytes; }
    void read(std::uint64_t at, void* to, std::size_t count) override;

private:
    const std::string name;
    std::uint64_t bytes = 0, position = 0;
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file;
};

/// Bytes in memory, which must outlive this object.
class MemorySource : public ByteSource {
public:
    explicit MemorySource(std::string_view content) noexcept : bytes(content) {}
    std::uint64_t size() const noexcept override { return bytes.size(); }
    void read(std::uint64_t at, void* to, std::size_t count) override;

private:
    std::string_view bytes;
};

}   // namespace belvor
