// Small files that ask for more work than anyone could wait for. What bounds them is the
// number of progress reports, which grows with the work, not a clock.
#include "tests/readers/dxf/DXFText.h"
#include "tests/support/Reporters.h"

#include <gtest/gtest.h>

using namespace belvor;
using namespace belvor::test;

namespace {

constexpr std::size_t maxReports = 20000;

/// Blocks B0 to B(count − 1), each inserting all others, with `more` in each.
std::string knot(int count, const std::string& more)
{
    std::string all;
    for (int i = 0; i < count; ++i) {
        std::string entities = more;
        for (int other = 0; other < count; ++other)
            if (other != i) entities += '|' + insertion("B" + std::to_string(other));
        all += block("B" + std::to_string(i), entities);
    }
    return all;
}

/// The total for each reason, and the facets, of a reading that may not report too often.
std::string outcomeWithin(const std::string& bytes, ReadingRules rules = ReadingRules::strict)
{
    RecordingReporter reporter(maxReports);
    std::map<std::string, std::uint64_t> byKind;
    const Reading read = readDXF(bytes, reporter, {.rules = rules});
    for (const auto& entry : read.account.notDrawn)
        byKind[entry.type + (entry.reason.ends_with("inserts itself") ? " in itself" : "")] += entry.count;
    std::string text = std::to_string(read.model->facetCount());
    for (const auto& [kind, count] : byKind) text += "; " + kind + ' ' + std::to_string(count);
    return text;
}

}   // namespace

TEST(HostileDXF, BlocksThatInsertOneAnotherAreCountedWithoutVisitingEach)
{
    for (const std::uint64_t count : {2, 5, 11, 14}) {
        // The INSERTs that close a circle: on a path of k blocks the last one has k - 1 of them.
        std::uint64_t paths = 0, circles = 0, ofLength = 1;
        for (std::uint64_t length = 1; length <= count; ++length) {
            paths += ofLength;
            circles += ofLength * (length - 1);
            ofLength *= count - length;
        }
        const std::string all = knot(static_cast<int>(count), "0 TEXT|8 0|1 x");
        EXPECT_EQ(outcomeWithin(drawing(all, insertion("B0", "|70 3"))),
                  "0; INSERT in itself " + std::to_string(3 * circles) + "; TEXT "
                      + std::to_string(3 * paths));
    }
    // Where the way to a surface leads only through a block that is under way.
    const std::string gate = block("F", face()) + block("GATE", insertion("F") + insertion("B0"));
    EXPECT_EQ(outcomeWithin(drawing(knot(11, insertion("GATE")) + gate, insertion("GATE"))).substr(0, 3),
              "1; ");
}

TEST(HostileDXF, CellsThatDrawNothingAreCountedWithoutVisitingEach)
{
    const std::string faces = block("FACE", "0 3DFACE|8 0|10 1e308|20 0|11 1|21 0|12 1|22 1|0 TEXT|8 0")
                              + block("NEAR", face())
                              + block("OUTER", insertion("FACE", "|41 10|70 9|71 9|44 1|45 1"));
    std::string kinds;
    for (int i = 0; i < 1000; ++i) kinds += "|0 TYPE" + std::to_string(i) + "|8 0";
    const std::string array = "|70 32767|71 32767|44 1|45 1";
    const std::tuple<const char*, std::string, std::string> cases[] = {
        {"the insertion point does",
         "0 INSERT|8 0|2 NEAR|10 1e308|20 0|41 1e308|70 32767|71 32767|44 1e10|45 1", "0; facet 1073676289"},
        {"an array within", insertion("OUTER", array), "0; TEXT 86967779409; facet 86967779409"},
        {"a thousand types", insertion("KINDS", "|70 1000|71 1000"),
         "0; ? 1000000; TEXT 1000000; TYPE0 1000000"},
        {"the cells from some row on", insertion("NEAR", "|42 1e300|70 3|71 32767|45 3e7"),
         "18; facet 98283"},
        {"so do the steps of an array", insertion("NEAR", "|70 32767|71 32767|44 1e307|45 1e307"),
         "324; facet 1073675965"},
        {"the same where something is drawn", insertion("MIXED", "|70 10|71 1000"),
         "10000; TYPE0 10000; TYPE1 10000"},
    };
    for (const auto& [why, entity, wantedOutcome] : cases) {
        const std::string all = faces + block("KINDS", "0 TEXT|8 0" + kinds) + block("MIXED", face() + kinds);
        const std::string outcome = outcomeWithin(drawing(all, entity));
        EXPECT_EQ(outcome.substr(0, wantedOutcome.size()), wantedOutcome) << why;
        if (entity.find("INSERT|8 0|2 NEAR") != std::string::npos) continue;   // near in the modern reading
        EXPECT_EQ(outcomeWithin(drawing(all, entity), ReadingRules::modern), outcome) << why;
    }
}

TEST(HostileDXF, EmptySectionsDoNotCauseBlocksToBeReadAgain)
{
    std::string faces, sections;
    for (int i = 0; i < 100; ++i) faces += face();
    for (int i = 0; i < 1000; ++i)
        sections += sectionOf("BLOCKS", "") + sectionOf("ENTITIES", insertion("MANY"));
    const std::string all = dxfText(sectionOf("BLOCKS", block("MANY", faces)) + sections + "0 EOF");
    for (const ReadingRules rules : {ReadingRules::strict, ReadingRules::modern})
        EXPECT_EQ(outcomeWithin(all, rules), "100000");
}

/// 100,000 lines, each with 100,000 gaps and no dash.
TEST(HostileDXF, APatternOfGapsIsGivenUpAndCanBeAbandoned)
{
    const std::string hatch =
        entities("0 HATCH|8 0|10 0|20 0|30 0|70 0|91 1|92 2|72 0|73 1|93 4|10 0|20 0|10 4|20 0|10 4|20 4|10 "
                 "0|20 4|97 0|"
                 "75 0|76 1|52 0|41 1|77 0|78 1|53 0|43 0|44 0|45 0|46 4e-5|79 1|49 -4e-5|98 0");
    RecordingReporter patient(maxReports), impatient(100);
    EXPECT_EQ(readDXF(hatch, patient, {.curves = true}).account.skipped(), 1u);
    EXPECT_THROW(readDXF(hatch, impatient, {.curves = true}), Reporter::Abandoned);
}
