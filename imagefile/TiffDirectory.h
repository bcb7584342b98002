#pragma once

#include "imagefile/LittleEndian.h"

#include <cstdint>

namespace belvor {

/// Puts together one image directory of a little-endian TIFF file (TIFF 6.0, section 2).
/// Entries are added by rising tag.
class TiffDirectory {
public:
    enum Type : std::uint16_t { ascii = 2, shortInteger = 3, longInteger = 4, rational = 5 };

    /// One 16-bit value, which stands in the low half of the entry.
    void addShort(std::uint16_t tag, std::uint16_t value) { add(tag, shortInteger, 1, value); }
    /// `count` values at `offset`; or, where they need at most four bytes, the values themselves in `offset`.
    void add(std::uint16_t tag, Type type, std::uint32_t count, std::uint32_t offset)
    {
        entries.u16(tag).u16(type).u32(count).u32(offset);
        ++entryCount;
    }

    /// The directory's bytes; `next` is the offset of the following image's directory, 0 for none.
    std::string bytes(std::uint32_t next) const
    {
        return LittleEndian().u16(entryCount).data() + entries.data() + LittleEndian().u32(next).data();
    }

private:
    LittleEndian entries;
    std::uint16_t entryCount = 0;
};

}   // namespace belvor
