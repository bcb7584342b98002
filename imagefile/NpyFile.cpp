#include "imagefile/NpyFile.h"

#include "imagefile/LittleEndian.h"
#include "imagefile/SeekableOutput.h"

#include <bit>
#include <cstring>

namespace belvor {
namespace {

static_assert(std::endian::native == std::endian::little, "numbers are written as they lie in memory");
constexpr std::size_t recordBytes = 3 + 4 + 8 + 2;

/// The text that describes the array, as long as it has to be for the data to begin at a multiple of 64.
std::string describe(const ImageHeader& header)
{
    std::string text = "{'descr': [('colour', '|u1', (3,)), ('code', '<u4'), ('distance', '<f8'), "
                       "('material', '<u2')], 'fortran_order': False, 'shape': ("
                       + std::to_string(header.height) + ", " + std::to_string(header.width) + "), }";
    constexpr std::size_t before = 10;
    while ((before + text.size() + 1) % 64 != 0) text += ' ';
    return text + '\n';
}

}   // namespace

NpyFile::NpyFile(OutputFile& file, const ImageHeader& header)
    : PlainImageWriter(file, header),
      rgb(3 * static_cast<std::size_t>(header.width)),
      depth(static_cast<std::size_t>(header.width)),
      material(depth.size()),
      records(recordBytes * depth.size())
{
    const std::string text = describe(header);
    LittleEndian begin;
    begin.raw("\x93NUMPY").u8(1).u8(0).u16(static_cast<std::uint16_t>(text.size())).raw(text);
    writeTo(output, begin.data().data(), begin.data().size());
}

void NpyFile::writeRow()
{
    char* record = records.data();
    for (std::size_t i = 0; i < depth.size(); ++i, record += recordBytes) {
        const double distance = scale.distance(depth[i]);
        std::memcpy(record, &rgb[3 * i], 3);
        std::memcpy(record + 3, &depth[i], 4);
        std::memcpy(record + 7, &distance, 8);
        std::memcpy(record + 15, &material[i], 2);
    }
    writeTo(output, records.data(), records.size());
}

}   // namespace belvor
