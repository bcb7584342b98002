#include "readers/man/ManFile.h"

#include "app/errors/BadFile.h"
#include "app/errors/Reporter.h"
#include "platform/Win32Error.h"

#include <gtest/gtest.h>

#include <string>

namespace belvor {
namespace {

std::string faultOf(const std::string& text)
{
    SilentReporter silent;
    try {
        const Handle<ManFile> model(new ManFile(text, "t.man", silent));
    } catch (const BadFile& fault) {
        return fault.what();
    }
    return "none";
}

}   // namespace

TEST(ManFaults, NameTheFaultTheFileAndTheLine)
{
    const std::string h = "KRVT v5.1.0 MAN file\n";
    const std::string e = h + "END\n";
    const std::string triangle = e + "CLUMP a 3 1\n0 0 0\n1 0 0\n0 1 0\nm\n";
    const std::string notMan = "File is not a 'KRVT v5.1.0 MAN file'", header = "end-of-file reading header records",
                      past = "read past end-of-file", real = "Error reading double item value",
                      integer = "Error reading integer item value", loop = "degenerate loop",
                      edgeEnd = "end-of-file reading EDGE record", noEdge = "CLUMP not followed by EDGE record",
                      vertex = "vertex number out of range";
    const struct { const char* why; std::string text, fault; int line; } cases[] = {
        {"an empty file", "", notMan, 1},
        {"a blank first line", "\n" + h + "END\n", notMan, 1},
        {"another version", "KRVT v5.1.1 MAN file\nEND\n", notMan, 1},
        {"a blank behind", "KRVT v5.1.0 MAN file \nEND\n", notMan, 1},
        {"a byte order mark", "\xEF\xBB\xBF" + h + "END\n", notMan, 1},
        {"lines that end with CR alone", "KRVT v5.1.0 MAN file\rEND\r", notMan, 1},
        {"cut in the first line", "KRVT v5.1.0 MAN", notMan, 1},

        {"line 1 alone", "KRVT v5.1.0 MAN file", header, 1},
        {"no END", h + "UNITS 1 1\n# END\n", header, 3},
        {"END in small letters is an unknown record", h + "end\n", header, 2},
        {"a clump without END before it", h + "CLUMP a 0 0\nEDGE 0\n", header, 3},
        {"cut in a header record", h + "UNITS 2", header, 2},
        {"cut in a colour", h + "MATERIAL m 0 0", header, 2},

        {"unit code above the list", h + "UNITS 9 1\nEND\n", integer, 2},
        {"unit code below the list", h + "UNITS -1 1\nEND\n", integer, 2},
        {"scale zero", h + "UNITS 1 0\nEND\n", real, 2},
        {"scale missing", h + "UNITS 1\nEND\n", real, 2},
        {"scale not finite", h + "UNITS 1 inf\nEND\n", real, 2},
        {"a material without a name", h + "\nMATERIAL\nEND\n", "material expected", 3},
        {"colour above 1", h + "MATERIAL m 0 1.01 0\nEND\n", real, 2},
        {"colour below 0", h + "MATERIAL m 0 0 -1e-9\nEND\n", real, 2},
        {"colour not a number", h + "MATERIAL m nan 0 0\nEND\n", real, 2},
        {"decimal comma", h + "MATERIAL m 0,5 0 0\nEND\n", real, 2},

        {"something else behind END", e + "EDGE 0\n", "CLUMP record expected", 3},
        {"more edges than announced", triangle + "EDGE 3\n1 2 1 0\n2 3 1 0\n3 1 1 0\n1 3 0 0\n", "CLUMP record expected", 12},
        {"a count missing", e + "CLUMP a 1\n", integer, 3},
        {"name missing", e + "CLUMP 1 0\nEDGE 0\n", integer, 3},
        {"a negative count", e + "CLUMP a -1 0\nEDGE 0\n", integer, 3},
        {"a count beyond 31 bits", e + "CLUMP a 2147483648 0\n", integer, 3},
        {"the largest counts and no data", e + "CLUMP a 2147483647 2147483647\n0 0 0\n", past, 4},
        {"cut in the CLUMP line", e + "CLUMP a 1", past, 3},
        {"ends behind the CLUMP line", e + "CLUMP a 1 0\n", past, 3},
        {"ends among the facets", e + "CLUMP a 1 9\n0 0 0\nm\n", past, 5},
        {"ends before EDGE", e + "CLUMP a 1 0\n0 0 0\n", past, 4},
        {"cut in a vertex", e + "CLUMP a 1 0\n0 0", past, 4},
        {"a coordinate missing", e + "CLUMP a 1 0\n0 0\nEDGE 0\n", real, 4},
        {"a coordinate too large", e + "CLUMP a 1 0\n0 0 1e999\nEDGE 0\n", real, 4},
        {"a coordinate with a letter behind", e + "CLUMP a 1 0\n0 0 1m\nEDGE 0\n", real, 4},
        {"more vertices than announced are taken for facets", e + "CLUMP a 1 1\n0 0 0\n1 0 0\nm\nEDGE 0\n", noEdge, 6},
        {"two clumps without edges", e + "CLUMP a 0 0\nCLUMP b 0 0\nEDGE 0\n", noEdge, 4},
        {"EDGE without a count", e + "CLUMP a 0 0\nEDGE\n", integer, 4},
        {"a negative edge count", e + "CLUMP a 0 0\nEDGE -2\n", integer, 4},

        {"ends among the edges", triangle + "EDGE 3\n1 2 1 0\n2 3 1 0\n", edgeEnd, 10},
        {"ends behind EDGE, with a huge count", triangle + "EDGE 2147483647\n", edgeEnd, 8},
        {"cut in an edge", triangle + "EDGE 3\n1 2 1", edgeEnd, 9},
        {"an edge too short", triangle + "EDGE 3\n1 2 1\n2 3 1 0\n3 1 1 0\n", integer, 9},
        {"vertex 0", triangle + "EDGE 3\n0 2 1 0\n", vertex, 9},
        {"vertex above the clump's", triangle + "EDGE 3\n1 4 1 0\n", vertex, 9},
        {"a vertex of the clump before", triangle + "EDGE 3\n1 2 1 0\n2 3 1 0\n3 1 1 0\nCLUMP b 1 0\n0 0 0\nEDGE 1\n2 1 0 0\n", vertex, 15},
        {"negative vertex", triangle + "EDGE 3\n1 -1 1 0\n", vertex, 9},
        {"no vertex at all", e + "CLUMP a 0 0\nEDGE 1\n1 1 0 0\n", vertex, 5},
        {"facet above the clump's", triangle + "EDGE 3\n1 2 2 0\n", loop, 9},
        {"negative facet", triangle + "EDGE 3\n1 2 1 -1\n", loop, 9},
        {"a real facet number", triangle + "EDGE 3\n1 2 1.0 0\n", integer, 9},
        {"a facet without edges", triangle + "EDGE 0\n", loop, 8},
        {"a loop that is open", triangle + "EDGE 2\n1 2 1 0\n2 3 1 0\n", loop, 8},
        {"a loop whose edges run against each other", triangle + "EDGE 3\n1 2 1 0\n2 3 1 0\n1 3 1 0\n", loop, 8},
        {"sides mixed up", triangle + "EDGE 3\n1 2 1 0\n2 3 0 1\n3 1 1 0\n", loop, 8},
        {"the second facet is open", e + "CLUMP a 3 2\n0 0 0\n1 0 0\n0 1 0\nm\nm\nEDGE 3\n1 2 1 2\n2 3 1 2\n3 1 1 0\n", loop, 9},
    };
    for (const auto& c : cases)
        EXPECT_EQ(faultOf(c.text), c.fault + " at line " + std::to_string(c.line) + " in t.man") << c.why;
}

/// A file may be cut anywhere, in a download or a full disk.
TEST(ManFaults, EveryPrefixOfAFileIsReadOrRefused)
{
    const std::string whole = "KRVT v5.1.0 MAN file\nUNITS 2 1\nMATERIAL m 0 0.5 1\nEND\nCLUMP a 3 1\n0 0 0\n1.5 0 0\n0 1 0\nm\n"
                              "EDGE 3\n1 2 1 0\n2 3 1 0\n3 1 1 0\n";
    const std::size_t firstWhole = whole.find("END\n") + 3;
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        const std::string fault = faultOf(whole.substr(0, length));
        const bool complete = length >= whole.size() - 1 || length == firstWhole || length == firstWhole + 1;
        EXPECT_EQ(fault == "none", complete) << length << " bytes: " << fault;
    }
}

TEST(ManFaults, AMissingFileIsTheSystemsError)
{
    SilentReporter silent;
    EXPECT_THROW(ManFile(std::string(BELVOR_SOURCE_DIR "/samples/man/none.man"), silent), Win32Error);
}

}   // namespace belvor
