#pragma once

#include "imagefile/ByteSource.h"
#include "imagefile/ImageHeader.h"
#include "resources/Texts.h"

#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

namespace belvor {

/// A byte of a file that an Ombr file does not have there.
class OmbrFault : public std::runtime_error {
public:
    OmbrFault(std::uint64_t where, Text what) : OmbrFault(where, std::string(textOf(what))) {}
    OmbrFault(std::uint64_t where, const std::string& what) : std::runtime_error(what), position(where) {}
    /// Bytes from the start of the file.
    std::uint64_t offset() const noexcept { return position; }

private:
    std::uint64_t position;
};

/// Reads an Ombr file as docs/ombr-format.md describes it, one row at a time. Used by one thread at a time.
class OmbrReader {
public:
    /// Reads and checks all but the rows; `source` must outlive this object. Throws OmbrFault for the first
    /// fault, FileError, std::bad_alloc.
    explicit OmbrReader(ByteSource& source);

    const ImageHeader& header() const noexcept { return about; }
    /// The text of the Software entry.
    const std::string& software() const noexcept { return madeBy; }

    /// Reads a row, from 0 at the top; the spans below show it until the next call. Throws FileError.
    void readRow(int row);
    std::span<const std::uint32_t> depth() const noexcept { return depths; }
    std::span<const std::uint16_t> material() const noexcept { return numbers; }
    std::span<const std::uint8_t> rgb() const noexcept { return colours; }

    /// Checks every row, from the first: a pixel is empty in all images or in none, empty pixels have one
    /// colour, every material has its record, and nothing follows the pixels of a row. `goOn` is called for
    /// each row, and what it throws passes. Throws OmbrFault for the first fault, FileError.
    template <class GoOn>
    void checkRows(GoOn goOn)
    {
        RowRules rules = rowRules();
        for (int row = 0; row < about.height; ++row) {
            goOn(row);
            checkRow(row, rules);
        }
    }

private:
    struct Layout;
    struct RowRules {
        std::vector<bool> known;   // by material number
        bool hasEmpty = false;
        std::uint8_t empty[3]{};
    };

    RowRules rowRules() const;
    void checkRow(int row, RowRules& rules);
    void need(std::uint64_t at, std::uint64_t count) const;
    std::uint16_t u16(std::uint64_t at);
    std::uint32_t u32(std::uint64_t at);
    void expect(std::uint64_t at, const std::string& bytes, Text fault);
    void expectStrips(std::uint64_t at, std::uint32_t inRecord, std::uint32_t bytes);
    Layout findLayout();
    void readSize(std::uint64_t directory);
    void checkColour(const Layout& layout);
    void checkDepth(const Layout& layout);
    void checkMaterial(const Layout& layout);
    void readBand(std::uint64_t block);
    void readCamera(std::uint64_t block);
    void readMaterials(const Layout& layout);
    std::uint64_t readMaterial(std::uint64_t at, std::uint64_t end, std::uint64_t previous);
    std::uint64_t rowAt(int row) const noexcept
    {
        return 8 + static_cast<std::uint64_t>(row) * record.size();
    }

    ByteSource& source;
    ImageHeader about{};
    std::string madeBy;
    std::vector<unsigned char> record;   // a row, as the file has it
    std::span<const std::uint32_t> depths;
    std::span<const std::uint16_t> numbers;
    std::span<const std::uint8_t> colours;
};

}   // namespace belvor
