#include "imagefile/TiffFile.h"

#include "imagefile/ImageDescription.h"
#include "imagefile/LittleEndian.h"
#include "imagefile/SeekableOutput.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <string>

namespace belvor {
namespace {

static_assert(std::endian::native == std::endian::little, "rows are written as they lie in memory");

std::size_t strideOf(const ImageHeader& header)
{
    return (9 * static_cast<std::size_t>(header.width) + 3) / 4 * 4;
}

/// A directory entry with its value, of which it may be that it stands elsewhere.
struct Entry {
    enum Type : std::uint16_t {
        ascii = 2,
        shortInteger = 3,
        longInteger = 4,
        rational = 5,
        longInteger8 = 16
    };
    std::uint16_t tag;
    Type type;
    std::uint64_t count;
    std::string value;
};

Entry shortEntry(std::uint16_t tag, std::initializer_list<std::uint16_t> values)
{
    LittleEndian bytes;
    for (const std::uint16_t value : values) bytes.u16(value);
    return {tag, Entry::shortInteger, values.size(), bytes.data()};
}

Entry longEntry(std::uint16_t tag, std::uint32_t value)
{
    return {tag, Entry::longInteger, 1, LittleEndian().u32(value).data()};
}

Entry textEntry(std::uint16_t tag, std::string text)
{
    text += '\0';
    const std::size_t count = text.size();
    return {tag, Entry::ascii, count, std::move(text)};
}

/// What the three pages differ in.
struct Page {
    const char* name;
    std::uint16_t bits, samples, photometric, sampleFormat;
    std::uint32_t inRecord, stripBytes;   // of its part of a row record
};

/// The directories of a file with rows from `dataStart` on.
class Directories {
public:
    Directories(const ImageHeader& imageHeader, bool withBigOffsets, std::uint64_t dataAt)
        : header(imageHeader),
          big(withBigOffsets),
          dataStart(dataAt)
    {
        const auto width = static_cast<std::uint32_t>(header.width);
        constexpr std::uint16_t blackIsZero = 1, rgb = 2, unsignedInteger = 1, floatingPoint = 3;
        const Page pages[] = {{"colour", 8, 3, rgb, unsignedInteger, 6 * width, 3 * width},
                              {"distance", 32, 1, blackIsZero, floatingPoint, 0, 4 * width},
                              {"material", 16, 1, blackIsZero, unsignedInteger, 4 * width, 2 * width}};
        bytes.u16(0x4949).u16(big ? 43 : 42);
        if (big) bytes.u16(8).u16(0).u64(16);
        else bytes.u32(8);
        for (const Page& page : pages) addPage(page, &page == std::end(pages) - 1);
        while (bytes.data().size() % 8 != 0) bytes.u8(0);
    }

    const std::string& text() const noexcept { return bytes.data(); }

private:
    std::vector<Entry> entriesOf(const Page& page) const
    {
        const LittleEndian one = LittleEndian().u32(1).u32(1);
        std::vector<Entry> entries{longEntry(256, static_cast<std::uint32_t>(header.width)),
                                   longEntry(257, static_cast<std::uint32_t>(header.height)),
                                   page.samples == 1 ? shortEntry(258, {page.bits})
                                                     : shortEntry(258, {page.bits, page.bits, page.bits}),
                                   shortEntry(259, {1}), shortEntry(262, {page.photometric})};
        if (page.samples == 3) entries.push_back(textEntry(270, describeImage(header)));
        entries.push_back(stripOffsets(page));
        entries.push_back(shortEntry(277, {page.samples}));
        entries.push_back(longEntry(278, 1));
        entries.push_back(stripByteCounts(page));
        entries.push_back({282, Entry::rational, 1, one.data()});
        entries.push_back({283, Entry::rational, 1, one.data()});
        entries.push_back(shortEntry(284, {1}));
        entries.push_back(textEntry(285, page.name));
        entries.push_back(shortEntry(296, {1}));
        entries.push_back(page.samples == 1
                              ? shortEntry(339, {page.sampleFormat})
                              : shortEntry(339, {page.sampleFormat, page.sampleFormat, page.sampleFormat}));
        return entries;
    }

    Entry stripOffsets(const Page& page) const
    {
        LittleEndian offsets;
        std::uint64_t at = dataStart + page.inRecord;
        for (int row = 0; row < header.height; ++row, at += strideOf(header)) addOffset(offsets, at);
        return {273, big ? Entry::longInteger8 : Entry::longInteger,
                static_cast<std::uint64_t>(header.height), offsets.data()};
    }

    Entry stripByteCounts(const Page& page) const
    {
        LittleEndian counts;
        for (int row = 0; row < header.height; ++row) counts.u32(page.stripBytes);
        return {279, Entry::longInteger, static_cast<std::uint64_t>(header.height), counts.data()};
    }

    void addOffset(LittleEndian& to, std::uint64_t value) const
    {
        if (big) to.u64(value);
        else to.u32(static_cast<std::uint32_t>(value));
    }

    void addPage(const Page& page, bool last)
    {
        const std::vector<Entry> entries = entriesOf(page);
        const std::size_t inEntry = big ? 8 : 4, entryBytes = big ? 20 : 12;
        std::uint64_t at = bytes.data().size() + (big ? 8 : 2) + entries.size() * entryBytes + inEntry;
        if (big) bytes.u64(entries.size());
        else bytes.u16(static_cast<std::uint16_t>(entries.size()));
        LittleEndian elsewhere;
        for (const Entry& entry : entries) {
            bytes.u16(entry.tag).u16(entry.type);
            addOffset(bytes, entry.count);
            if (entry.value.size() <= inEntry) {
                bytes.raw(entry.value).raw(std::string(inEntry - entry.value.size(), '\0'));
                continue;
            }
            addOffset(bytes, at + elsewhere.data().size());
            elsewhere.raw(entry.value).raw(std::string((8 - entry.value.size() % 8) % 8, '\0'));
        }
        at += elsewhere.data().size();
        addOffset(bytes, last ? 0 : at);
        bytes.raw(elsewhere.data());
    }

    const ImageHeader& header;
    const bool big;
    const std::uint64_t dataStart;
    LittleEndian bytes;
};

std::string directoriesOf(const ImageHeader& header)
{
    const std::uint64_t rows = std::uint64_t{strideOf(header)} * static_cast<unsigned>(header.height);
    for (const bool big : {false, true}) {
        // Where the rows begin changes numbers in the directories, not their length.
        const std::size_t length = Directories(header, big, 0).text().size();
        if (big || length + rows <= std::numeric_limits<std::uint32_t>::max())
            return Directories(header, big, length).text();
    }
    return {};
}

template <class T>
std::span<T> numbersIn(std::vector<std::uint8_t>& record, std::size_t at, std::size_t count)
{
    return {reinterpret_cast<T*>(record.data() + at), count};
}

}   // namespace

TiffFile::TiffFile(OutputFile& file, const ImageHeader& header)
    : PlainImageWriter(file, header),
      record(strideOf(header)),
      distances(numbersIn<float>(record, 0, static_cast<std::size_t>(header.width))),
      material(numbersIn<std::uint16_t>(record, 4 * distances.size(), distances.size())),
      rgb(numbersIn<std::uint8_t>(record, 6 * distances.size(), 3 * distances.size())),
      depth(distances.size())
{
    const std::string directories = directoriesOf(header);
    writeTo(output, directories.data(), directories.size());
}

void TiffFile::writeRow()
{
    std::transform(depth.begin(), depth.end(), distances.begin(),
                   [this](std::uint32_t code) { return static_cast<float>(scale.distance(code)); });
    writeTo(output, record.data(), record.size());
}

}   // namespace belvor
