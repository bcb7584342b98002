#include "tests/readers/dxf/DXFText.h"

#include <gtest/gtest.h>

namespace belvor::test {
namespace {

const std::string line = "0 LINE|8 0|10 0|20 0|30 0|11 1|21 0|31 0|";

TEST(DXFAccount, EachRecordIsCountedOnceWithOneReason)   // more of reasons in tests/dxf_ezdxf/
{
    // Columns: why, blocks, content, account.
    const std::tuple<const char*, std::string, std::string, std::string> cases[] = {
        {"a type that is not drawn", "", "0 TEXT|8 cold|0 TEXT|8 0|", "TEXT 2 = 0 + 2 type not drawn; "},
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
        {"unreadable types share a row", "", "0 line|8 0|0 \x7f|8 0|0 A", "? 3 = 0 + 3 type not drawn; "},
        {"nothing", "", "", "the file holds no entities "},
    };
    for (const auto& [why, blocks, content, account] : cases)
        EXPECT_EQ(accountOf(readDXF(drawing(blocks, content)).account), account) << why;
    for (const char* const end : {"0 ENDSEC", "0 EOF"})
        EXPECT_EQ(accountOf(readDXF(dxfText("0 SECTION|2 ENTITIES|" + face() + end)).account),
                  "3DFACE 1 = 1; the drawing ends early, within a section or without EOF: something may be "
                  "missing ")
            << end;
}

TEST(DXFAccount, FewEntitiesFarFromAllOthersAreToldByHandleOrLine)
{
    const auto at = [](const std::string& x, const std::string& y, const std::string& handle = "") {
        return "0 3DFACE|" + handle + "|8 0|10 " + x + "|20 " + y + "|11 100|21 100|12 100|22 101|";
    };
    std::string many;
    for (int i = 0; i < 200; ++i) many += at(std::to_string(i % 20), std::to_string(i / 20));
    for (int i = 0; i < 20; ++i) many += insertion("B", "30 " + std::to_string(i));
    const std::string stray = at("1e6", "0", "5 2F"), curve = "0 LINE|5 C|8 0|10 0|20 -9e4|11 0|21 0|",
                      told = " entities make the extent more than 100 times larger: ";
    // Columns: why, content, warning.
    const std::tuple<const char*, std::string, std::string> cases[] = {
        {"the first, without a handle", at("0", "-3e5") + many, "1 of 221" + told + "line 93"},
        {"an INSERT", many + insertion("B", "5 3|30 1e9"), "1 of 221" + told + "handle 3"},
        {"more than a hundredth", stray + stray + many + stray, ""},
        {"all in one point but one", stray + many.substr(many.find("0 INSERT")), ""},
        {"a curve", many + curve, "1 of 221" + told + "handle C"},
    };
    for (const ReadingRules rules : {ReadingRules::strict, ReadingRules::modern})
        for (const auto& [why, content, warning] : cases) {
            const Reading read =
                readDXF(drawing(block("B", face()), content), {.rules = rules, .curves = true});
            EXPECT_EQ(read.account.warnings, std::vector<std::string>(warning.empty() ? 0 : 1, warning))
                << why;
        }
    EXPECT_TRUE(readDXF(drawing(block("B", face()), many + curve)).account.warnings.empty()) << "not drawn";
}

TEST(DXFAccount, WhatTheUserCanHaveDrawnIsMarked)
{
    const std::string content =
        face("off") + face("cold") + "0 TEXT|8 0|0 HATCH|8 0|" + line + insertion("none") + "0 x|8 0";
    std::string marked;
    for (const NotDrawn& entry : readDXF(drawing("", content)).account.notDrawn)
        if (entry.canBeDrawn) marked += entry.type + ": " + entry.reason + "; ";
    EXPECT_EQ(marked, "3DFACE: layer cold is frozen; 3DFACE: layer off is off; HATCH: this type is not "
                      "drawn; INSERT: block none is not defined; ");
}

}   // namespace
}   // namespace belvor::test
