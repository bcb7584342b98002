#pragma once

#include "imagefile/ImageHeader.h"
#include "platform/OutputFile.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

namespace belvor {

class LittleEndian;

/// Writes an Ombr file: a little-endian TIFF file with a colour, a depth and a material
/// image, one record a row. docs/ombr-format.md describes every byte. Rows go out as they
/// come; the directories follow when the file is closed. The file is written beside its name,
/// which it takes when it is closed. Used by one thread at a time.
class OmbrFile {
public:
    /// A call of the standard I/O functions failed; what() is the system's text for errno.
    class Error : public std::runtime_error {
    public:
        Error();
        explicit Error(int code);
        int code() const noexcept { return savedErrno; }

    protected:
        Error(const std::string& text, int code) : std::runtime_error(text), savedErrno(code) {}

    private:
        int savedErrno;
    };
    /// This process is writing a file of that name already.
    class Busy : public Error {
    public:
        Busy();
    };

    static constexpr int largestWidth = 16383, largestHeight = 65535;

    /// Throws Error (file too large) when the picture's sizes do not fit their 16 bits, or
    /// when the whole file with `materialBytes` of material records would not fit offsets of 32.
    static void checkSize(long long width, long long height, unsigned long long materialBytes);
    /// The bytes of one material's record, at most.
    static unsigned long long materialBytes(const std::string& name) { return 9 + name.size() + 2; }

    /// Opens the file (`path` is UTF-8) and writes its header. Throws Error, Busy.
    OmbrFile(const std::string& path, std::uint16_t width, std::uint16_t height, std::string version,
             const CameraRecord& camera);
    /// Writes into `output`, which must outlive this object, and leaves it to the caller to commit
    /// it after close(). `materialRecords` is the number of bytes of all material records to come
    /// (materialBytes(), each made even): with it the header is right from the start, so that the
    /// file can go to a pipe. With `band` the file holds `height` rows of a picture. Throws Error.
    OmbrFile(OutputFile& output, std::uint16_t width, std::uint16_t height, std::string version,
             const CameraRecord& camera, std::uint32_t materialRecords,
             const std::optional<ImageHeader::Band>& band);
    OmbrFile(const OmbrFile&) = delete;
    OmbrFile& operator=(const OmbrFile&) = delete;
    /// Closes what is still open, silently. A file that has not been closed is not whole: it takes
    /// its name only where that has no file, or an empty one.
    virtual ~OmbrFile();

    /// Appends the row that rgb, depth and material hold. Throws Error.
    virtual void writeRow();
    /// Appends a material's record; after the last row. Throws Error.
    virtual void addMaterial(std::uint16_t index, std::uint8_t red, std::uint8_t green, std::uint8_t blue,
                             const std::string& name);
    /// Writes the directories. A file of a path is flushed to the disk and takes its name; with another
    /// output the caller does that. Does nothing when it is closed already. Throws Error.
    virtual void close();

private:
    struct Channel;

    std::vector<unsigned char> record;   // of a row, as the file has it

public:
    const std::span<std::uint32_t> depth;      ///< Depth codes of the row to write.
    const std::span<std::uint16_t> material;   ///< Material numbers of the row.
    const std::span<std::uint8_t> rgb;         ///< Three bytes a pixel of the row.

private:
    void write(const void* bytes, std::size_t count);
    void write(const std::string& bytes) { write(bytes.data(), bytes.size()); }
    void writeHeader(std::uint32_t firstDirectory);
    std::uint32_t position() const noexcept { return written; }
    std::uint32_t writeMaterialImage();
    std::uint32_t writeDepthImage(std::uint32_t next);
    std::uint32_t writeColourImage(std::uint32_t next);
    std::uint32_t writeSingleChannel(std::uint16_t bits, const Channel& strips, const LittleEndian& block,
                                     std::uint32_t next);
    Channel writeStrips(std::uint32_t inRecord, std::uint16_t byteCount);
    void writeDirectories();
    [[noreturn]] void fail();

    const std::unique_ptr<OutputFile> ownOutput;   // none where the caller has it
    OutputFile& output;
    std::uint32_t written = 0;          // bytes
    std::uint32_t firstDirectory = 0;   // as the header says
    const std::uint16_t width, height;
    const std::string version;
    const CameraRecord camera;
    const std::optional<ImageHeader::Band> band;
    std::uint32_t dataStart = 0;
    std::uint32_t lastMaterial = 0, materialCount = 0;
    bool closed = false, failed = false;
};

}   // namespace belvor
