#pragma once

#include <string_view>

namespace belvor {

/// A code page with one byte a character: what bytes 128 to 255 mean, U+FFFD for nothing.
struct SingleByteTable {
    int codePage;
    std::u16string_view upperHalf;   ///< 128 characters.
};

/// A code page with one or two bytes a character.
struct DoubleByteTable {
    static constexpr int firstTrail = 0x40;

    int codePage;
    std::u16string_view singles;   ///< Of bytes 128 to 255; U+FFFD for lead bytes and for nothing.
    int firstLead;                 ///< Of the rows.
    const std::u16string_view*
        rows;   ///< One a lead byte: from trail byte 0x40 on; what is beyond its end is nothing.
    int rowCount;
};

/// The table of that code page, or null.
const SingleByteTable* singleByteTable(int codePage) noexcept;   // in SingleByteTables.cpp
const DoubleByteTable* doubleByteTable(int codePage) noexcept;   // in DoubleByteTables.cpp

}   // namespace belvor
