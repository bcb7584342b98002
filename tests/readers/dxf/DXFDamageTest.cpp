#include "tests/readers/dxf/DXFText.h"

#include "errors/BadFile.h"
#include "tests/support/LineEnds.h"

#include <gtest/gtest.h>

#include <cstring>

namespace belvor::test {
namespace {

/// "2 facets; 13 LINE left out: ...", a repair after the other.
std::string repairsOf(const std::string& bytes)
{
    try {
        const Reading drawing = readModern(bytes);
        std::string text = std::to_string(drawing.model->facetCount()) + " facets";
        for (const Repair& repair : drawing.account.repairs)
            text += "; " + std::to_string(repair.position) + ' ' + repair.record + ' ' + repair.text;
        EXPECT_EQ(drawing.account.repairs.size(), drawing.account.repairCount);
        for (const auto& [type, count] : drawing.account.entities)
            EXPECT_EQ(count.read, count.drawn + count.skippedInAll()) << type;
        return text;
    } catch (const BadFile& fault) {
        return fault.what();
    }
}

const std::string once = block("B", face(), "8 0");   // without a base point
const std::string insert = insertion("B");

TEST(DXFDamage, ADamagedEntityIsLeftOut)
{
    const std::tuple<const char*, std::string, std::string> cases[] = {
        {"a vertex number out of range, after a face",
         "0 POLYLINE|8 0|70 64|0 VERTEX|70 192|10 0|20 0|0 VERTEX|70 192|10 1|20 0|0 VERTEX|70 192|10 0|20 1|"
         "0 VERTEX|70 128|71 1|72 2|73 3|0 VERTEX|70 128|71 1|72 2|73 4|0 SEQEND|"
             + face(),
         "1 facets; 5 POLYLINE left out: PolyfaceMesh index: vertex[4] outside range (0..3) at line 53"},
        {"a real where an integer belongs, commas for points",
         "0 POLYLINE|8 0|70 16,0|71 2.0|72 2.0|0 VERTEX|10 0,5|20 0|0 VERTEX|10 1|20 0|0 VERTEX|10 0|20 1|"
         "0 VERTEX|10 1|20 1|0 SEQEND|",
         "1 facets"},
    };
    for (const auto& [why, content, outcome] : cases) EXPECT_EQ(repairsOf(entities(content)), outcome) << why;
    EXPECT_EQ(repairsOf(dxfText(layerTable("0 LAYER|2 cold|70 1")) + entities("0 LINE|8 cold|10 x|20 0")),
              "0 facets; 23 LINE left out: Error reading double item value at line 27");
}

TEST(DXFDamage, NamesNumbersAndMarkersAreRepaired)   // more of markers in tests/dxf_ezdxf/
{
    const std::string drawn = sectionOf("ENTITIES", insert);
    const std::tuple<const char*, std::string, std::string> cases[] = {
        {"a block without a name",
         sectionOf("BLOCKS", "0 BLOCK|8 0|" + face() + "0 ENDBLK|" + once) + drawn + "0 EOF",
         "1 facets; 5 BLOCK left out with what it holds: it has no name"},
        {"the first block of a name counts",
         sectionOf("BLOCKS", once + "0 BLOCK|2 B|" + face() + face() + "0 ENDBLK|") + drawn + "0 EOF",
         "1 facets; 29 BLOCK left out with what it holds: there is a block of that name already"},
        {"a block with a bad base point, in an array",
         sectionOf("BLOCKS", "0 BLOCK|2 B|10 x|" + face() + "0 LINE|8 0|10 0|0 ENDBLK|")
             + sectionOf("ENTITIES", insertion("B", "70 9")) + "0 EOF",
         "9 facets; 9 BLOCK Error reading double item value: the default stands for it; "
         "27 LINE left out: Bad DXF group: item <20> needed"},
        {"no sections", "999 a note|" + face() + "0 ENDSEC|" + face() + "0 EOF", "2 facets"},
        {"a section without a name", "0 SECTION|0 TEXT|8 0|" + face() + "0 ENDSEC|0 EOF",
         "1 facets; 1 SECTION it has no name: its first record says what it holds"},
        {"a section without a name, in paper space",
         "0 SECTION|" + face("0", "67 1|") + face("0", "67 1|") + "0 ENDSEC|0 EOF",
         "2 facets; 1 SECTION it has no name: its first record says what it holds"},
        {"records outside of sections, after an ENDSEC too many and without their SECTION",
         sectionOf("BLOCKS", "0 ENDSEC|" + once) + "0 LAYER|2 x|" + insert + "0 ENDSEC|" + face() + "0 EOF",
         "2 facets; 7 SECTION missing: taken as given before BLOCK; "
         "37 SECTION missing: taken as given before INSERT; "
         "49 SECTION missing: taken as given before 3DFACE; 65 ENDSEC missing: taken as given before EOF"},
        {"a line that is no group code", "0 SECTION|2 ENTITIES|" + face() + "0 LINE|x 0|0 ENDSEC|0 EOF",
         "1 facets; 21 LINE left out: Error reading group-code at line 23; 23 LINE the reading ends here: "
         "Error reading group-code"},
        {"no record at all", "5 0|8 0|", "the file holds no record of a DXF drawing in a.dxf"},
        {"a layer with a bad number stays as it is",
         sectionOf("TABLES", "0 TABLE|2 LAYER|0 LAYER|2 0|70 x|62 -1|0 TABLE|2 LTYPE|")
             + sectionOf("ENTITIES", face()) + "0 EOF",
         "0 facets; 13 LAYER Error reading integer item value: the default stands for it"},
    };
    for (const auto& [why, text, outcome] : cases) EXPECT_EQ(repairsOf(dxfText(text)), outcome) << why;
}

TEST(DXFDamage, TextAsEditorsSaveItIsRead)
{
    const std::string text = dxfText(sectionOf("ENTITIES", face()) + "0 EOF");
    const std::string spaced = endingLines(text, " \t\n"),
                      cut = text.substr(0, text.size() - std::strlen("0\nEOF\n"));
    for (const std::string& bytes :
         {"\xEF\xBB\xBF" + text, spaced, text + "\n\n \n", text + "\x1A\n", text + "x", cut + "0\nEOF",
          "\n\r\n" + text, cut + "\n\n0\nEOF", endingLines(text, "\r\r\n")})
        EXPECT_EQ(repairsOf(bytes), "1 facets") << bytes;
    for (const char* const end : {"", "\n\n\n", "\x1A", " \n\x1A garbage"})
        EXPECT_EQ(repairsOf(cut + end), "1 facets; 23 EOF missing: taken as given at the end of the file")
            << end;
    // Blank lines count as lines.
    const std::string faulty = dxfText(sectionOf("ENTITIES", face() + face() + "0 LINE|8 0|10 x|") + "0 EOF");
    EXPECT_EQ(repairsOf(" \n" + faulty.substr(0, 10) + '\n' + faulty.substr(10)),
              "2 facets; 39 LINE left out: Error reading double item value at line 43");
}

TEST(DXFDamage, BinaryValuesHaveTheirCurrentWidths)
{
    // Each of these groups is as wide as it is in today's drawings, or what follows is not found.
    const std::string groups =
        "100 AcDbFace|105 1F|110 #8|149 #8|160 #8|179 #2|270 #2|290 #1|300 a|310 %bytes|320 F|370 #2|"
        "390 F|400 #2|410 a|420 #4|430 a|440 #4|460 #8|470 a|1004 %more|1005 F|1010 #8|1060 #2|1071 #4|";
    const std::string whole = sectionOf("ENTITIES", face("0", groups)) + "0 EOF";
    for (const bool twoBytes : {false, true})
        for (const char* const before : {"", "999 a comment|", "5 1F|999 another|", "70 #2|40 1|"})
            EXPECT_EQ(repairsOf(binaryDXF(before + whole, twoBytes)), "1 facets") << before << twoBytes;
    const std::string all = binaryDXF(sectionOf("ENTITIES", face()) + "0 EOF", true),
                      cut = repairsOf(all.substr(0, all.size() - 40));
    EXPECT_TRUE(cut.starts_with("0 facets")) << cut;
    EXPECT_NE(cut.find("the reading ends here: read past end-of-file"), std::string::npos) << cut;
}

}   // namespace
}   // namespace belvor::test
