#include "tests/readers/dxf/DXFText.h"

#include <gtest/gtest.h>

namespace belvor::test {
namespace {

const std::string line = "0 LINE|8 0|10 0|20 0|30 0|11 1|21 0|31 0|";

TEST(DXFAccount, EachRecordIsCountedOnceWithOneReason)
{
    // Columns: why, blocks, content, account.
    const std::tuple<const char*, std::string, std::string, std::string> cases[] = {
        {"drawn and without surface", "", face() + line, "3DFACE 1 = 1; LINE 1 = 0 + 1 no surface; "},
        {"layers", "", face("cold") + face("off") + face(), "3DFACE 3 = 1 + 1 layer frozen + 1 layer off; "},
        {"a type that is not drawn counts as that on any layer", "", "0 TEXT|8 cold|0 TEXT|8 0|",
         "TEXT 2 = 0 + 2 type not drawn; "},
        {"all on one layer that is off", "", face("off"),
         "3DFACE 1 = 0 + 1 layer off; everything that could be drawn is on layer off, which is off "},
        {"an array draws each record once", block("A", face()), insertion("A", "70 3|71 5") + insertion("A"),
         "3DFACE 1 = 1; INSERT 2 = 2; "},
        {"a block that is never inserted", block("A", face() + "0 TEXT|8 0") + block("B", face()),
         insertion("B"),
         "3DFACE 2 = 1 + 1 block never inserted; INSERT 1 = 1; TEXT 1 = 0 + 1 type not drawn; "},
        {"a block that only a frozen INSERT names", block("A", face()), insertion("A", "", "cold"),
         "3DFACE 1 = 0 + 1 block never inserted; INSERT 1 = 0 + 1 layer frozen; "},
        {"an INSERT of nothing that is drawn", block("A", line) + block("B", insertion("A")), insertion("B"),
         "INSERT 2 = 0 + 2 no surface; LINE 1 = 0 + 1 no surface; "},
        {"nested: an INSERT draws when what it inserts does", block("A", face()) + block("B", insertion("A")),
         insertion("B"), "3DFACE 1 = 1; INSERT 2 = 2; "},
        {"unknown and empty blocks", block("E", ""), insertion("E") + insertion("none"),
         "INSERT 2 = 0 + 1 block empty + 1 block unknown; "},
        {"a block that inserts itself", block("A", face() + insertion("A")), insertion("A"),
         "3DFACE 1 = 1; INSERT 2 = 1 + 1 block inserts itself; "},
        {"two blocks that insert each other, both entered from outside",
         block("A", face() + insertion("B")) + block("B", line + insertion("A")),
         insertion("A") + insertion("B"), "3DFACE 1 = 1; INSERT 4 = 4; LINE 1 = 0 + 1 no surface; "},
        {"vertices and attributes belong to the record before them", "",
         "0 POLYLINE|8 0|66 1|70 0|0 VERTEX|8 0|10 0|20 0|0 VERTEX|8 0|10 1|20 0|0 SEQEND|8 0|"
             + insertion("none", "66 1") + "0 ATTRIB|8 0|0 SEQEND|8 0|",
         "INSERT 1 = 0 + 1 block unknown; POLYLINE 1 = 0 + 1 no surface; "},
        {"ATTDEF and VIEWPORT count", block("A", face() + "0 ATTDEF|8 0"), insertion("A") + "0 VIEWPORT|8 0",
         "3DFACE 1 = 1; ATTDEF 1 = 0 + 1 type not drawn; INSERT 1 = 1; VIEWPORT 1 = 0 + 1 type not drawn; "},
        {"a block without an end", "0 BLOCK|2 A|10 0|20 0|30 0|" + line + block("B", face()), insertion("A"),
         "3DFACE 1 = 0 + 1 block never inserted; INSERT 1 = 0 + 1 no surface; LINE 1 = 0 + 1 no surface; "},
        {"unreadable types share a row", "", "0 line|8 0|0 \x7f|8 0", "? 2 = 0 + 2 type not drawn; "},
        {"nothing", "", "", "the file holds no entities "},
    };
    for (const auto& [why, blocks, content, account] : cases)
        EXPECT_EQ(accountOf(readDXF(drawing(blocks, content)).account), account) << why;
    EXPECT_EQ(
        accountOf(readDXF(dxfText(sectionOf("ENTITIES", face()))).account),
        "3DFACE 1 = 1; the drawing ends early, within a section or without EOF: something may be missing ");
}

TEST(DXFAccount, TheInsertsOfEachBlockAreCounted)
{
    // In a block that nothing inserts, before the block, in an array, frozen, empty, of itself.
    const std::string blocks = block("B", insertion("A") + insertion("A")) + block("A", face())
                               + block("C", insertion("A") + insertion("C") + insertion("none"))
                               + block("E", "") + block("F", "");
    const std::string content = insertion("B") + insertion("B", "70 9") + insertion("B", "71 0")
                                + insertion("E") + insertion("A", "", "cold");
    for (const ReadingRules rules : {ReadingRules::strict, ReadingRules::modern})
        EXPECT_EQ(readDXF(drawing(blocks, content), {.rules = rules}).account.blocks,
                  (std::map<std::string, std::uint64_t, std::less<>>{
                      {"A", 4}, {"B", 3}, {"C", 1}, {"E", 1}, {"F", 0}}));
}

}   // namespace
}   // namespace belvor::test
