#include "tests/readers/dxf/DXFText.h"

#include <gtest/gtest.h>

namespace belvor::test {
namespace {

constexpr const char* face = "0 3DFACE|8 0|10 0|20 0|30 0|11 1|21 0|31 0|12 0|22 1|32 0|";
constexpr const char* line = "0 LINE|8 0|10 0|20 0|30 0|11 1|21 0|31 0|";

std::string block(const std::string& name, const std::string& content)
{
    return "0 BLOCK|2 " + name + "|8 0|70 0|10 0|20 0|30 0|" + content + "0 ENDBLK|";
}

std::string insert(const std::string& name, const std::string& more = "")
{
    return "0 INSERT|8 0|2 " + name + "|10 0|20 0|30 0|" + more;
}

std::string drawing(const std::string& blocks, const std::string& content)
{
    const std::string layers =
        "0 SECTION|2 TABLES|0 TABLE|2 LAYER|0 LAYER|2 cold|70 1|62 7|0 LAYER|2 off|70 0|62 -7|"
        "0 ENDTAB|0 ENDSEC|";
    return dxfText(layers + "0 SECTION|2 BLOCKS|" + blocks + "0 ENDSEC|0 SECTION|2 ENTITIES|" + content
                   + "0 ENDSEC|0 EOF|");
}

TEST(DXFAccount, EachRecordIsCountedOnceWithOneReason)
{
    const std::string onLayer = "0 3DFACE|8 %|10 0|20 0|30 0|11 1|21 0|31 0|12 0|22 1|32 0|";
    const auto faceOn = [&](const std::string& layer) {
        std::string text = onLayer;
        return text.replace(text.find('%'), 1, layer);
    };
    // Columns: why, blocks, content, account.
    const std::tuple<const char*, std::string, std::string, std::string> cases[] = {
        {"drawn and without surface", "", face + std::string(line),
         "3DFACE 1 = 1; LINE 1 = 0 + 1 no surface; "},
        {"layers", "", faceOn("cold") + faceOn("off") + face,
         "3DFACE 3 = 1 + 1 layer frozen + 1 layer off; "},
        {"a type that is not drawn counts as that on any layer", "", "0 TEXT|8 cold|0 TEXT|8 0|",
         "TEXT 2 = 0 + 2 type not drawn; "},
        {"all on one layer that is off", "", faceOn("off"),
         "3DFACE 1 = 0 + 1 layer off; everything that could be drawn is on layer off, which is off "},
        {"an array draws each record once", block("A", face), insert("A", "70 3|71 5|") + insert("A"),
         "3DFACE 1 = 1; INSERT 2 = 2; "},
        {"a block that is never inserted", block("A", face + std::string("0 TEXT|8 0|")) + block("B", face),
         insert("B"), "3DFACE 2 = 1 + 1 block never inserted; INSERT 1 = 1; TEXT 1 = 0 + 1 type not drawn; "},
        {"a block that only a frozen INSERT names", block("A", face), "0 INSERT|8 cold|2 A|10 0|20 0|",
         "3DFACE 1 = 0 + 1 block never inserted; INSERT 1 = 0 + 1 layer frozen; "},
        {"an INSERT of nothing that is drawn", block("A", line) + block("B", insert("A")), insert("B"),
         "INSERT 2 = 0 + 2 no surface; LINE 1 = 0 + 1 no surface; "},
        {"nested: an INSERT draws when what it inserts does", block("A", face) + block("B", insert("A")),
         insert("B"), "3DFACE 1 = 1; INSERT 2 = 2; "},
        {"unknown and empty blocks", block("E", ""), insert("E") + insert("none"),
         "INSERT 2 = 0 + 1 block empty + 1 block unknown; "},
        {"a block that inserts itself", block("A", face + insert("A")), insert("A"),
         "3DFACE 1 = 1; INSERT 2 = 1 + 1 block inserts itself; "},
        {"two blocks that insert each other, both entered from outside",
         block("A", face + insert("B")) + block("B", line + insert("A")), insert("A") + insert("B"),
         "3DFACE 1 = 1; INSERT 4 = 4; LINE 1 = 0 + 1 no surface; "},
        {"vertices and attributes belong to the record before them", "",
         "0 POLYLINE|8 0|66 1|70 0|0 VERTEX|8 0|10 0|20 0|0 VERTEX|8 0|10 1|20 0|0 SEQEND|8 0|"
             + insert("none", "66 1|") + "0 ATTRIB|8 0|0 SEQEND|8 0|",
         "INSERT 1 = 0 + 1 block unknown; POLYLINE 1 = 0 + 1 no surface; "},
        {"ATTDEF and VIEWPORT count", block("A", std::string(face) + "0 ATTDEF|8 0|"),
         insert("A") + "0 VIEWPORT|8 0|",
         "3DFACE 1 = 1; ATTDEF 1 = 0 + 1 type not drawn; INSERT 1 = 1; VIEWPORT 1 = 0 + 1 type not drawn; "},
        {"a block without an end",
         "0 BLOCK|2 A|8 0|70 0|10 0|20 0|30 0|" + std::string(line) + block("B", face), insert("A"),
         "3DFACE 1 = 0 + 1 block never inserted; INSERT 1 = 0 + 1 no surface; LINE 1 = 0 + 1 no surface; "},
        {"unreadable types share a row", "", "0 line|8 0|0 \x7f|8 0|", "? 2 = 0 + 2 type not drawn; "},
        {"nothing", "", "", "the file holds no entities "},
    };
    for (const auto& [why, blocks, content, account] : cases)
        EXPECT_EQ(accountOf(readDXF(drawing(blocks, content)).account), account) << why;
    EXPECT_EQ(
        accountOf(readDXF(dxfText("0 SECTION|2 ENTITIES|" + std::string(face) + "0 ENDSEC|")).account),
        "3DFACE 1 = 1; the drawing ends early, within a section or without EOF: something may be missing ");
}

TEST(DXFAccount, TheInsertsOfEachBlockAreCounted)
{
    const Reading reading =
        readDXF(drawing(block("A", face) + block("B", insert("A") + insert("A")) + block("C", face),
                        insert("B") + insert("B", "70 9|")));
    const auto& blocks = reading.account.blocks;
    EXPECT_EQ(blocks, (std::map<std::string, std::uint64_t, std::less<>>{{"A", 2}, {"B", 2}, {"C", 0}}));
}

}   // namespace
}   // namespace belvor::test
