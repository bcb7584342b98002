#include "readers/things/Things.h"
#include "account/Account.h"
#include "errors/BadFile.h"
#include "tests/support/Models.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace belvor;

namespace {

using test::RecordingReporter;

/// What a text leaves: whether it is whole, counts, each facet as "material(normal)", or the fault.
std::string outcome(const std::string& text)
{
    SilentReporter silent;
    try {
        Account account;
        const Handle<Model> model = Things(text, "case.thf", silent, account).takeModel();
        std::string result = std::string(account.warnings.empty() ? "whole " : "cut ")
                             + std::to_string(model->vertexCount()) + " "
                             + std::to_string(model->edgeCount());
        for (std::uint32_t i = 0; i < model->facetCount(); ++i) {
            const Vector<3>& n = model->facet(i).plane.normal();
            result += " " + model->facet(i).material->name
                      + (n == Vector<3>(0, 0, 1)    ? "+"
                         : n == Vector<3>(0, 0, -1) ? "-"
                                                    : "?");
        }
        return result + ", " + std::to_string(model->materials().size());
    } catch (const BadFile& fault) {
        EXPECT_EQ(fault.file(), "case.thf");
        EXPECT_EQ(fault.line(), BadFile::noLine);
        const std::string what = fault.what();
        return what.substr(0, what.find(" in "));
    }
}

const std::string triangle = "0 0 0\n1 0 0\n0 1 0\n0\n1\n";

}   // namespace

TEST(Things, ReadsOrRefusesEveryFormOfText)
{
    const std::tuple<const char*, std::string, const char*> cases[] = {
        {"empty", "", "whole 0 0, 0"},
        {"plain", "Y 3\n" + triangle + "1 Steel\n3 1 2 3\n", "whole 3 3 Steel+, 1"},
        {"only a space ends the word", "Y\n3\n" + triangle + "1 Steel\n3 1 2 3\n", "degenerate loop"},
        {"ten letters leave one for the count", "Yabcdefghi 3\n" + triangle + "1 Steel\n3 1 2 3\n",
         "cut 0 0, 0"},
        {"@ is blank", "Y @3@0 0 0@1 0 0@0 1 0@0@1@1@@@Steel@ \n3@1 2 3", "whole 3 3 Steel+, 1"},
        {"a digit is no name", "Y 3\n" + triangle + "1 3 1 2 3\n", "whole 3 3 DEFAULT+, 1"},
        {"Ctrl-Z ends the text", "Y 3\n" + triangle + "1 S\n3 1 2 3\n\x1A Y 3", "whole 3 3 S+, 1"},
        {"a hole uses two of the count",
         "Y 6 0 0 0 9 0 0 0 9 0 1 1 0 2 1 0 1 2 0 0 2 2 Plate\n3 1 2 3 3 4 6 5\n", "whole 6 6 Plate+, 1"},
        {"a loop of one vertex", "Y 3\n" + triangle + "1 S\n1 2\n", "whole 3 1 S+, 1"},
        {"last number out of range", "Y 3\n" + triangle + "1 S\n3 1 2 4\n", "vertex number out of range"},
        {"loop of no vertices", "Y 3\n" + triangle + "1 S\n0\n", "degenerate loop"},
        {"edges are checked and dropped", "Y 3 0 0 0 1 0 0 0 1 0 2 1 2 Wire\n2 3 Wire\n1 1 S\n3 1 2 3\n",
         "whole 3 3 S+, 1"},
        {"each thing numbers its own vertices",
         "Y 3\n" + triangle + "1 A\n3 1 2 3\nyes 3\n" + triangle + "1 B\n3 3 2 1\nN 1 2 3",
         "whole 6 6 A+ B-, 2"},
        {"no loops leave the count to another facet", "Y 3\n" + triangle + "0 A\n1 B\n3 1 2 3\n",
         "whole 3 3 A+ B+, 2"},
        {"the end of a long name is read as a number",
         "Y 3\n" + triangle + "1 " + std::string(31, 'a') + "12\n3 1 2 3\n", "vertex number out of range"},
        {"a count without data", "Y 2000000000 0 0 0 1 0 0", "cut 2 0, 0"},
        {"loop counts that would overflow", "Y 3\n" + triangle + "-9000000000000000000 S\n",
         "material expected"},
        {"an edge count beyond 64 bits", "Y 1 1 2 3 99999999999999999999 1 1 S", "cut 1 0, 0"},
    };
    for (const auto& [why, text, wantedOutcome] : cases) EXPECT_EQ(outcome(text), wantedOutcome) << why;
}
