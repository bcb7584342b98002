#include "tests/readers/dxf/DXFText.h"
#include "tests/support/LineEnds.h"

#include <gtest/gtest.h>

#include <functional>
#include <sstream>

namespace belvor::test {
namespace {

/// Forty faces, of which the middle one has `odd` instead of its first corner. Those beside each other have
/// the same comment or never do. Some have a number in common.
std::string faces(const std::string& odd, bool repeat)
{
    std::string groups;
    for (int i = 0; i < 40; ++i) {
        const std::string n = std::to_string(i), z = std::to_string(i * 0.37);
        groups += "0 3DFACE|5 " + std::to_string(i * 7) + "|8 A|" + (i == 20 ? odd : "10 0|20 " + z + "|30 0")
                  + "|11 -" + n + ".12345678|21 0|31 12345678." + n + "|12 " + z + "|22 " + n
                  + "|32 0|13 1234567." + std::to_string(i / 3 % 7) + "|23 " + n + ".5|33 0|999 "
                  + (repeat || i % 2 ? "a|" : "b|");
    }
    return "0 SECTION|2 ENTITIES|" + groups;
}

/// A polyface mesh of forty positions and forty faces; the middle one of its faces has `odd` for its corners.
std::string meshFaces(const std::string& odd, bool repeat)
{
    std::string groups = "0 SECTION|2 ENTITIES|0 POLYLINE|8 A|66 1|70 64|";
    const auto comment = [repeat](int i) { return std::string("999 ") + (repeat || i % 2 ? "a|" : "b|"); };
    for (int i = 0; i < 40; ++i)
        groups += "0 VERTEX|8 A|10 " + std::to_string(i * i * 0.37) + "|20 " + std::to_string(i * 7 % 11)
                  + "|30 -" + std::to_string(i % 3) + ".5|70 192|" + comment(i);
    for (int i = 0; i < 40; ++i) {
        const std::string n = std::to_string(i % 37 + 1), next = std::to_string(i % 36 + 2);
        const std::string corners = "71 " + n + "|72 " + next + "|73 -" + std::to_string(40 - i) + "|74  39";
        groups += "0 VERTEX|5 " + std::to_string(i * 9) + "|8 A|70 128|" + (i == 20 ? odd : corners) + "|"
                  + comment(i);
    }
    return groups + "0 SEQEND|";
}

const std::string end = "0 ENDSEC|0 EOF";

TEST(DXFRepeats, AreReadAsIfEachRecordStoodAlone)
{
    const std::function<std::string(const std::string&)> encodings[] = {
        [](const std::string& groups) { return dxfText(groups + end); },
        [](const std::string& groups) { return endingLines(dxfText(groups + end), "\r\n"); },
        [](const std::string& groups) { return dxfText(groups + "|x x"); },
        [](const std::string& groups) { return binaryDXF(groups + end, true); },
        [](const std::string& groups) { return binaryDXF(groups + end, false); },
    };
    const auto check = [&encodings](std::string (*drawing)(const std::string&, bool),
                                    const std::string& odd) {
        for (const ReadingRules rules : {ReadingRules::strict, ReadingRules::modern})
            for (const auto& encoded : encodings)
                EXPECT_TRUE(everythingOf(encoded(drawing(odd, true)), {.rules = rules})
                            == everythingOf(encoded(drawing(odd, false)), {.rules = rules}))
                    << odd;
    };
    std::istringstream oddOnes(
        "10 1|20 2|30 3;10 1|20 2;20 2|10 1|30 3;10 1|20 x|30 3;10 1|20 2,5|30 3;10  1 |20 2\t|30;"
        "10 +1|20 .5|30 5.;10 1e1|20 2|30 -0.0;10 1e308|20 -1e308|30 0;10 nan|20 1|30 0;"
        "10 99999999.99999999|20 0.1234567890123456|30 0.00000000000000001;10 123456789012|20 1.5e|30 1-2;"
        "10 1|20 2|30 3|10 5;10 1|20 2|30 3|62 x;10 1|20 2|30 3|60 1;10 1|20 2|30 3|67 1;10 1|20 2|30 3|8 B;"
        "10 1 x|20 2|30 3;10 1|20|30 3;10 1|20 2|30 3|0 LINE");
    for (std::string odd; std::getline(oddOnes, odd, ';');) check(faces, odd);
    std::istringstream oddCorners(
        "71 1|72 2|73 3;71 1|72 2;71 1|72 2|73 0|74 4;71 1|72 2|73 3|74 -0;71 1|72 2|73 3|74 41;"
        "71 1|72 2|73 3|74 -41;71 x|72 2|73 3|74 4;71 1|72 2|73 3|74 x;71 0|72 2|73 3|74 4;71 +1|72 2|73 "
        "3|74 4;"
        "71 1.0|72 2|73 3|74 4;71 1 x|72 2|73 3|74 4;71 123456789|72 2|73 3|74 4;71 1|72 2|73 3|74 "
        "0000000004;"
        "71 1|71 2|72 3|73 4|74 5;72 1|71 2|73 3|74 4;71 -32768|72 2|73 3|74 4;71 1|72 2|73 3|74 4|70 192|10 "
        "1|20 2;"
        "71 1|72 2|73 3|74 4|62 x;71 1|72 2|73 3|74 4|1001 B|1070 7;71 1|72 2|73 3|74  -4 ");
    for (std::string odd; std::getline(oddCorners, odd, ';');) check(meshFaces, odd);
}

}   // namespace
}   // namespace belvor::test
