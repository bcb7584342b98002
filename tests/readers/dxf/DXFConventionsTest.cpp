#include "report/RunReport.h"
#include "tests/readers/dxf/DXFText.h"

#include "errors/Reporter.h"

#include <gtest/gtest.h>

namespace belvor::test {
namespace {

Reading readAs(const std::string& bytes, ReadingRules rules, DrawingColours colours = DrawingColours::byRules)
{
    return readDXF(bytes, {.rules = rules, .colours = colours});
}

/// "WALL 2, ...": the material of each run of facets, and their number.
std::string surfacesOf(const Reading& drawing)
{
    std::string text;
    const Model& model = *drawing.model;
    for (std::uint32_t i = 0, run = 0; i < model.facetCount(); i = run) {
        while (run < model.facetCount() && model.facet(run).material == model.facet(i).material) ++run;
        text += model.facet(i).material->name + ' ' + std::to_string(run - i) + ", ";
    }
    return text;
}

TEST(DXFConventions, ColoursAreTheDrawings)
{
    // Columns: why, blocks, content, surfaces. More is held against tests/dxf_ezdxf/.
    const std::tuple<const char*, std::string, std::string, std::string> cases[] = {
        {"layer 0 in a block takes the layer, also in the third insertion, which is played back",
         block("A", face() + face("Red")) + block("B", insertion("A")),
         insertion("B", "", "Red") + insertion("B", "", "true") + insertion("B", "62 5|", "none")
             + insertion("A"),
         "Red 2, true 1, Red 1, none 1, Red 1, 0 1, Red 1, "},
        {"materials of AVE win", block("A", face("0", "62 3|1001 AVE_FINISH|1005 1F")),
         "0 TEXT|5 1F|1001 AVE_MATERIAL|1000 brass|" + insertion("A", "70 3|", "Red"), "brass 3, "},
        {"no index of the table is the layer's", "", face("Red", "62 300") + face("Red", "62 -5"), "Red 2, "},
    };
    for (const auto& [why, blocks, content, surfaces] : cases)
        EXPECT_EQ(surfacesOf(readModern(drawing(blocks, content))), surfaces) << why;
    // Layers without a colour of the table are white; the first byte of a true colour does not count, with a
    // sign or without.
    const std::string layers = layerTable(
        "0 LAYER|2 A|70 0|62 0|0 LAYER|2 B|70 0|62 256|0 LAYER|2 C|70 0|0 LAYER|2 D|70 0|420 -1038994346|"
        "0 LAYER|2 E|70 0|420 3255972950");
    const std::string faces = face("A", "62 7") + face("B", "62 7") + face("C", "62 7")
                              + face("D", "420 3255972950") + face("E", "420 1193046");
    EXPECT_EQ(surfacesOf(readModern(dxfText(layers) + entities(faces))), "A 1, B 1, C 1, D 1, E 1, ");
    const std::string text =
        drawing(block("A", face("0", "62 0")), insertion("A", "62 2|", "Red") + face("Red", "62 x"));
    EXPECT_EQ(surfacesOf(readAs(text, ReadingRules::modern, DrawingColours::ofLayers)), "Red 2, ");
    EXPECT_EQ(surfacesOf(readAs(text, ReadingRules::strict, DrawingColours::ofDrawing)),
              "0 #ffff00 1, Red 1, ");
    EXPECT_EQ(surfacesOf(readAs(text, ReadingRules::strict)), "0 1, Red 1, ");
}

TEST(DXFConventions, LayersHideWhatEndsUpOnThem)
{
    const std::string line = "0 LINE|8 0|10 0|20 0|11 1|21 0|";
    // Columns: why, blocks, content, account.
    const std::tuple<const char*, std::string, std::string, std::string> cases[] = {
        {"and is off when nothing else is in it", block("A", face() + line),
         insertion("A", "", "off") + insertion("none", "", "off"),
         "3DFACE 1 = 0 + 1 layer off; INSERT 2 = 0 + 2 layer off; LINE 1 = 0 + 1 layer off; everything that "
         "could be drawn is on layer off, which is off "},
        {"invisible, with all it holds", block("A", face() + face("0", "60 1")),
         insertion("A") + insertion("A", "60 1"), "3DFACE 2 = 1 + 1 invisible; INSERT 2 = 1 + 1 invisible; "},
        {"invisible comes before never inserted and frozen", block("A", face("0", "60 1") + face()),
         face("cold", "60 1"), "3DFACE 3 = 0 + 2 invisible + 1 block never inserted; "},
        {"it is drawn when model space has nothing", block("A", face()),
         line + face("cold", "67 1") + insertion("A", "67 1") + "0 VIEWPORT|8 0|67 1|"
             + face("0", "67 1|60 1") + "0 LINE|67 1|10 0|",
         "3DFACE 3 = 1 + 1 invisible + 1 layer frozen; INSERT 1 = 1; LINE 2 = 0 + 1 faulty + 1 no surface; "
         "VIEWPORT 1 = 0 + 1 type not drawn; model space has nothing to draw: paper space is shown "},
        {"faulty comes first", block("A", "0 LINE|8 0|10 0|60 1"), "0 LINE|8 cold|10 0|60 1|67 1|",
         "LINE 2 = 0 + 2 faulty; "},
        {"names match in any case and without blanks at the end", block("Wall ", face()),
         insertion("WALL", "", "OFF") + insertion("wall", "", "rEd"),
         "3DFACE 1 = 1; INSERT 2 = 1 + 1 layer off; "},
    };
    for (const auto& [why, blocks, content, account] : cases)
        EXPECT_EQ(accountOf(readModern(drawing(blocks, content)).account), account) << why;
    const Reading twice = readModern(drawing("", face("0", "67 1|8 0") + "0 LINE|67 1|10 0|0 TEXT|67 1"));
    EXPECT_EQ(twice.account.repairCount, 1u) << "told once, though seen twice";
    for (const NotDrawn& entry : twice.account.notDrawn)
        EXPECT_EQ(entry.count, 1u) << entry.type << entry.reason;
}

TEST(DXFConventions, UnitsAreTheDrawings)
{
    const std::pair<int, std::uint32_t> cases[] = {{1, 7}, {2, 8},  {4, 2}, {5, 3}, {6, 4},  {7, 5},
                                                   {9, 6}, {13, 1}, {0, 0}, {3, 0}, {10, 0}, {-1, 0}};
    for (const auto& [ofDrawing, code] : cases) {
        const std::string header = sectionOf("HEADER", "9 $INSUNITS|70 " + std::to_string(ofDrawing));
        const Units units = readModern(dxfText(header + "0 EOF")).model->units();
        EXPECT_EQ(std::pair(units.code, units.scale), std::pair(code, 1.0)) << ofDrawing;
        EXPECT_EQ(readDXF(dxfText(header + "0 EOF")).model->units().code, 0u);
    }
}

TEST(DXFConventions, NamesBecomeUtf8)
{
    // Columns: why, header, name, shown, warnings.
    const std::tuple<const char*, std::string, std::string, std::string, std::string> cases[] = {
        {"a code page", "9 $ACADVER|1 AC1015|9 $DWGCODEPAGE|3 ANSI_1252|", "W\xE4nde", "W\u00E4nde", ""},
        {"UTF-8 from 2007 on", "9 $ACADVER|1 AC1021|9 $DWGCODEPAGE|3 ANSI_1252|", "\u00E4", "\u00E4", ""},
        {"an escape", "9 $DWGCODEPAGE|3 ANSI_1251|", "W\\U+00E4nde", "W\u00E4nde", ""},
        {"no code page, but UTF-8", "", "W\u00E4nde", "W\u00E4nde", ""},
        {"no code page", "", "W\xE4nde", "W\uFFFDnde",
         "names are written in a code page that is not known: characters of them are missing "},
        {"no UTF-8 where that should be", "9 $ACADVER|1 AC1032|", "W\xE4nde", "W\uFFFDnde", ""},
        {"spelt as in the table", "", "ReD ", "Red", ""},
    };
    for (const auto& [why, header, name, shown, warnings] : cases) {
        const Reading read = readModern(dxfText(sectionOf("HEADER", header)) + drawing("", face(name)));
        EXPECT_EQ(read.model->materials().begin()->second.name, shown) << why;
        EXPECT_EQ(accountOf(read.account), "3DFACE 1 = 1; " + warnings) << why;
    }
    const Reading strict = readAs(entities(face("W\xE4nde")), ReadingRules::strict);
    EXPECT_EQ(strict.model->materials().begin()->second.name, "W\uFFFDnde")
        << "never bytes as if they were UTF-8";
}

}   // namespace
}   // namespace belvor::test
