#include "errors/BadFile.h"
#include "platform/Files.h"
#include "readers/ModelFile.h"
#include "tests/readers/dxf/DXFText.h"
#include "tests/support/Models.h"

#include <gtest/gtest.h>

#include <utility>

using namespace belvor;
using namespace belvor::test;

namespace {

const std::string section = "0 SECTION|2 ENTITIES|";

std::string blocks(const std::string& all) { return sectionOf("BLOCKS", all); }

/// The drawing in these bytes, and the log of reading it.
std::pair<Handle<Model>, std::string> logged(const std::string& bytes)
{
    const TempFile file("logged.dxf", bytes);
    SilentReporter nobody;
    const Handle<Model> drawing = readModel(file.path(), FileType::dxf, nobody, {.log = true}).model;
    std::string log;
    EXPECT_TRUE(readWholeFile(file.path() + ".log", log));
    removeFile(file.path() + ".log");
    return {drawing, log};
}

}   // namespace

TEST(DXF, ReadsSectionsInAnyOrderAndReportsTheLineOfAFault)
{
    const std::string one = sectionOf("ENTITIES", face()), begun = section + face(),
                      faulty = block("B", "0 LINE|10 0");
    const std::tuple<const char*, std::string, const char*> cases[] = {
        {"ENTITIES before TABLES", one + layerTable("0 LAYER|2 0|70 1|62 7") + "0 EOF", "1 facets"},
        {"a section of another name", sectionOf("CLASSES", face()) + one + "0 EOF", "1 facets"},
        {"entities outside sections", face() + "0 EOF", "0 facets"},
        {"neither ENDSEC nor EOF", begun, "1 facets"},
        {"nothing counts behind EOF", "0 EOF|" + one, "0 facets"},
        {"a table without ENDTAB", sectionOf("TABLES", "0 TABLE|2 LAYER|0 LAYER|2 B|70 0|62 7") + begun,
         "1 facets"},
        {"no ENDBLK", blocks("0 BLOCK|2 B|10 0|20 0|30 0|" + face()) + section + insertion("B"), "1 facets"},
        {"layer without flags", layerTable("0 LAYER|2 A|62 7"),
         "Bad DXF group: item <70> needed at line 9 in a.dxf"},
        {"block without name", blocks("0 BLOCK|10 0|20 0|30 0|"),
         "Bad DXF group: item <2> needed at line 5 in a.dxf"},
        {"two blocks of one name", blocks(block("WALL", face()) + block("WALL", face())),
         "Duplicate BLOCK name WALL at line 33 in a.dxf"},
        {"a fault in a block", blocks(faulty) + section + insertion("B"),
         "Bad DXF group: item <20> needed at line 15 in a.dxf"},
        {"a block that nobody inserts is not looked into", blocks(faulty), "0 facets"},
        {"no number for a code", "0 SECTION|x", "Error reading group-code at line 3 in a.dxf"},
    };
    for (const auto& [why, groups, outcome] : cases) EXPECT_EQ(outcomeOf(dxfText(groups)), outcome) << why;
}

TEST(DXF, DrawsByLayerAndBlock)
{
    const std::string table =
        layerTable("0 LAYER|2 FROZEN|70 65|62 7|0 LAYER|2 OFF|70 0|62 -7|0 LAYER|2 ON|70 0|62 0|"
                   "0 LAYER|2 ON|70 1|62 7|0 LAYER|70 1|62 7");
    const std::string bs =
        blocks(block("B", face("A"))
               + "0 BLOCK|2 EMPTY|10 0|20 0|30 0|0 ENDBLK|0 BLOCK|2 XREF|70 4|10 0|20 0|30 0|0 ENDBLK|"
               + block("OUTER", insertion("LATE")) + block("SELF", face("A") + insertion("SELF"))
               + block("ONE", face("A") + insertion("TWO"))
               + block("TWO", face("A") + insertion("ONE", "70 3|44 1") + face("A"))
               + block("WORDS", "0 TEXT|8 0|0 TEXT|8 0")
               + block("PAGES", insertion("WORDS", "71 3") + insertion("NO") + insertion("WORDS")));
    const std::tuple<const char*, std::string, const char*> cases[] = {
        {"a second definition does not count", face("ON"), "1 facets"},
        {"no layer has no name", "0 3DFACE|10 0|20 0|11 1|21 0|12 1|22 1",
         "0 facets; 3DFACE 1 layer  is frozen"},
        {"a hidden POLYLINE",
         "0 POLYLINE|8 OFF|40 1|41 1|0 VERTEX|8 OFF|10 0|20 0|0 VERTEX|8 ON|10 5|20 0|0 SEQEND|8 OFF",
         "0 facets; POLYLINE 1 layer OFF is off"},
        {"an array of no rows", insertion("B", "71 0"), "0 facets; INSERT 1 the array has no cells"},
        {"a block that comes later",
         insertion("OUTER") + "|0 ENDSEC|" + blocks(block("LATE", face("A"))) + section + insertion("OUTER"),
         "1 facets; INSERT 1 block LATE is not defined"},
        {"from the other end", insertion("TWO"), "5 facets; INSERT 3 block TWO inserts itself"},
        {"nothing to draw, often", insertion("PAGES", "70 2000000000|71 1000000000"),
         "0 facets; INSERT 2000000000000000000 block NO is not defined; "
         "TEXT 16000000000000000000 this type is not drawn"},
    };
    for (const auto& [why, entity, outcome] : cases)
        EXPECT_EQ(outcomeOf(dxfText(table + bs + section + entity + "|0 ENDSEC|0 EOF")), outcome) << why;
}

TEST(DXF, MaterialsAreMadeWhenASurfaceNeedsThem)
{
    MaterialSequence::ofProgram().reset();
    const Handle<Model> drawing =
        readDXF(dxfText(layerTable("0 LAYER|2 HID|70 1|62 7") + section + "0 TEXT|8 NONE|1 x|" + face("HID")
                        + "0 LINE|8 THIN|10 0|20 0|11 1|21 1|"   // no surfaces: no materials
                        + face("Z") + face("A") + face("Z")
                        + "0 POINT|5 1F|8 X|1001 AVE_MATERIAL|1000 Brass|1000 other|"
                        + face("A", "1001 OTHER|1005 9|1001 AVE_FINISH|1005 1F")
                        + face("HID", "1001 AVE_FINISH|1005 2F")   // at once, drawn or not
                        + face("A", "1001 AVE_FINISH|1005 1F") + "0 ENDSEC|0 EOF"))
            .model;
    std::string found;
    for (const auto& [key, material] : drawing->materials())
        found += key + '=' + material.name + '#' + std::to_string(material.index) + ' ';
    EXPECT_EQ(found, "1F=Brass#3 2F=2F#4 A=A#2 Z=Z#1 ");
    std::string used;
    for (std::uint32_t i = 0; i < drawing->facetCount(); ++i) used += drawing->facet(i).material->name + ' ';
    EXPECT_EQ(used, "Z A Z Brass Brass ");
}

TEST(DXF, PlacesInsertedBlocks)   // where tests/dxf_ezdxf/ does not: the order of cells, and scales of zero
{
    const std::string drawing =
        blocks(block("B", "0 SOLID|10 1|20 0|11 2|21 0|12 1|22 1|13 2|23 1", "10 1|20 0|30 0")) + section;
    EXPECT_EQ(written(*readDXF(dxfText(drawing + insertion("B", "41 2|42 2|70 2|71 2|44 4|45 5"))).model),
              "(0 0 0) (2 0 0) (2 2 0) (0 2 0); (0 10 0) (2 10 0) (2 12 0) (0 12 0); "
              "(8 0 0) (10 0 0) (10 2 0) (8 2 0); (8 10 0) (10 10 0) (10 12 0) (8 12 0)")
        << "the spacing is scaled too";
    const Handle<Model> flat = readDXF(dxfText(drawing + insertion("B", "30 5|42 0"))).model;
    EXPECT_EQ(written(*flat), "(0 0 5) (1 0 5) (1 0 5) (0 0 5)");
    EXPECT_EQ(flat->facet(0).plane.normal(), Vector<3>(0, 0, 1));
}

TEST(DXF, InsertsTheSameEachTime)
{
    // Blocks within blocks, arrays, names of materials that change between insertions, hidden
    // layers and unknown blocks: the first insertions read text, the others play back.
    const std::string rich =
        "0 SOLID|8 A|10 0|20 0|11 4|21 0|12 0|22 3|13 4|23 3|39 1|210 1|220 1|230 0|0 TEXT|8 A|1 x"
        "|0 POINT|5 1F|8 X|1001 AVE_MATERIAL|1000 Brass|0 3DFACE|8 HID|10 0|20 0|11 1|21 0|12 1|22 1"
        "|0 CIRCLE|8 B|10 5|20 5|30 0|40 1|1001 AVE_FINISH|1005 1F";
    const std::string bs =
        layerTable("0 LAYER|2 HID|70 1|62 7")
        + blocks(block("INNER", rich, "10 1|20 2|30 3")
                 + block("OUTER", insertion("INNER", "50 30|41 2") + insertion("NO") + "|"
                                      + insertion("INNER", "30 4|70 2|44 9") + insertion("OUTER")));
    const std::string entity = insertion("OUTER", "50 10|42 -1|210 0|220 1|230 1");
    std::string all = bs + section + entity;
    for (int i = 0; i < 7; ++i) all += "|0 POINT|5 1F|8 X|1001 AVE_MATERIAL|1000 Steel|" + entity;
    EXPECT_EQ(outcomeOf(dxfText(all)),
              "168 facets; 3DFACE 24 layer HID is frozen; INSERT 8 block NO is not defined; INSERT 8 block "
              "OUTER inserts "
              "itself; POINT 31 this type is not drawn; TEXT 24 this type is not drawn");
    const Handle<Model> drawing = readDXF(dxfText(all)).model;
    EXPECT_EQ(drawing->materials().at("1F").name, "Brass");   // renamed by the last insertion
    // With the log on, every insertion reads the text; the drawing is the same.
    const Handle<Model> read = logged(dxfText(all)).first;
    EXPECT_TRUE(bitsOf(*read) == bitsOf(*drawing));
}

TEST(DXF, FollowsAChainOfTenThousandBlocks)
{
    std::string all;
    constexpr int count = 10000;
    for (int i = 0; i < count; ++i)
        all += block("B" + std::to_string(i),
                     i + 1 < count ? "0 INSERT|2 B" + std::to_string(i + 1) + "|10 1|20 0|30 0.5" : face());
    const Handle<Model> drawing =
        readDXF(dxfText(blocks(all) + section + insertion("B0") + insertion("B0") + insertion("B0"))).model;
    EXPECT_EQ(written(*drawing).substr(0, 45), "(9999 0 4999.5) (10000 0 4999.5) (9999 1 4999");
    EXPECT_EQ(drawing->facetCount(), 3u);
}

TEST(DXF, CanBeAbandonedInsideBlocks)
{
    std::string nest = block("L30", face());   // thirty levels of two insertions each
    for (int level = 0; level < 30; ++level) {
        const std::string inner = insertion("L" + std::to_string(level + 1));
        nest += block("L" + std::to_string(level), inner + inner);
    }
    for (const std::string& entity : {insertion("L0"), insertion("L30", "70 30000|71 30000|44 2|45 2")}) {
        RecordingReporter reporter(20000);
        EXPECT_THROW(readDXF(dxfText(blocks(nest) + section + entity), reporter), Reporter::Abandoned)
            << entity;
    }
}

TEST(DXF, ReadsManyLayersManyTypesAndLinesOfAMillionCharacters)
{
    std::string text = dxfText("0 SECTION|2 TABLES|0 TABLE|2 LAYER");
    for (int i = 0; i < 200000; ++i) text += "0\nLAYER\n2\nL" + std::to_string(i) + "\n70\n0\n62\n7\n";
    text += dxfText("0 ENDTAB|0 ENDSEC|" + section + face()) + "0\n" + std::string(1000000, 'X') + "\n8\n"
            + std::string(1000000, 'L') + "\n";
    for (int i = 1; i < 3000; ++i) text += "0\nTYPE" + std::to_string(i) + "\n";
    const Reading drawing = readDXF(text);
    EXPECT_EQ(drawing.model->facetCount(), 1u);
    EXPECT_EQ(drawing.account.skipped(), 3000u);
    EXPECT_LE(drawing.account.notDrawn.size(), 1001u);
    EXPECT_LE(drawing.account.entities.size(), Account::maxTypes + 1);
    std::string bad;
    for (int i = 0; i < 2000; ++i) bad += "0 LINE|10 x|";
    const Account repaired = readModern(entities(bad)).account;
    EXPECT_EQ(repaired.repairCount, 2000u);
    EXPECT_EQ(repaired.repairs.size(), 1000u);
}

TEST(DXFLog, RecordsWhatWasRead)
{
    const std::string log =
        logged(
            dxfText("0 SECTION|2 HEADER|9 $ACADVER|1 AC1009|0 ENDSEC|0 SECTION|2 THUMBNAIL|0 ENDSEC|"
                    + layerTable("0 LAYER|2 HID|70 1|62 7|0 LAYER|2 OFF|70 0|62 -1|0 LAYER|2 OFF|70 0|62 1")
                    + blocks(block("B", face("A"), "10 1|20 0|30 0")) + "0 SECTION|2 OBJECTS|0 ENDSEC|"
                    + section + "0 LINE|8 HID|2 name|0 LINE|8 OFF|" + insertion("B", "50 90", "OFF")
                    + "0 POINT|5 1F|8 Q|1001 AVE_MATERIAL|1000 Brass|0 ENDSEC|0 EOF"))
            .second;
    const std::string turned = "(6.123233995736766e-17, -1, 0) (1, 6.123233995736766e-17, 0) (0, 0, 1) + "
                               "(-6.123233995736766e-17, -1, 0)\n",
                      still = "(1, 0, 0) (0, 1, 0) (0, 0, 1) + (0, 0, 0)";
    EXPECT_EQ(log, "Main HEADER section at line 1\nENDSEC of HEADER section at line 9\n"
                   "Ignoring THUMBNAIL section at line 11\n"
                   "Main TABLES section at line 17\nstart of LAYERs TABLE at line 21\n"
                   "Adding LAYER definition HID (Frozen? 1, Off? 0) at line 25\n"
                   "Adding LAYER definition OFF (Frozen? 0, Off? 1) at line 33\n"
                   "Duplicate LAYER definition OFF at line 41\n"
                   "ENDTAB of LAYERs TABLE at line 49\nENDSEC of TABLES section at line 51\n"
                   "Main BLOCKS section at line 53\nAdding BLOCK definition B at line 57\n"
                   "ENDSEC of BLOCKS section at line 85\nMain OBJECTS section at line 87\n"
                   "Starting OBJECTS section at line 87\nENDSEC of OBJECTS section at line 91\n"
                   "Main ENTITIES section at line 93\nReadEntitiesSection for ENTITIES section from line 97\n"
                   "    transform = "
                       + still
                       + "\nskipping LINE name, frozen-layer HID at line 97\n"
                         "skipping LINE , OFF-layer OFF at line 103\n"
                         "keeping INSERT B, OFF-layer OFF at line 107\nINSERT at line 107\nInsert hook\n"
                         "InsertTransform [(1, 1, 1)    scale 90 degrees rotate (0, 0, 0) translate "
                       + still + " tilt ] * " + still + "\nInsertTransform = " + turned
                       + "ReadEntitiesSection for INSERTed block from line 119\n    transform = " + turned
                       + "Seek to block at line 67\nAdding LAYER A\n3DFACE at line 67\nadd new material A\n"
                         "ENDBLK of INSERTed block at line 83\nReturn from block to line 119\n"
                         "add new material 1F\nDefine material 1F as Brass\nAdding LAYER Q\n"
                         "ENDSEC of ENTITIES section at line 129\nEOF group - end of file here\n");
}

TEST(DXFLog, TellsOnceWhatDrawsNothing)
{
    const std::string text = blocks(block("B", "0 TEXT|8 0")) + section + insertion("B", "70 2000000000"),
                      log = logged(dxfText(text)).second;
    EXPECT_LT(log.size(), 1500u);
    EXPECT_NE(log.find("Nothing to draw in 1999999999 cells of block B\n"), std::string::npos) << log;
}
