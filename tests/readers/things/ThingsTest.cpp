#include "readers/things/Things.h"
#include "account/Account.h"
#include "errors/BadFile.h"
#include "tests/support/Models.h"
#include "tests/support/Reporters.h"
#include "text/JsonText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <memory>
#include <random>
#include <set>
#include <string>

using namespace belvor;

namespace {

/// What `tell` makes of the model and of whether the text was whole; or the fault. The text lies in memory of
/// its exact size, so that the address sanitizer sees a read beyond it.
template <class Tell>
std::string outcome(const std::string& text, Tell tell)
{
    const std::unique_ptr<char[]> exact(new char[text.size()]);
    std::copy(text.begin(), text.end(), exact.get());
    try {
        SilentReporter silent;
        Account account;
        const Handle<Model> model =
            Things({exact.get(), text.size()}, "case.thf", silent, account).takeModel();
        return tell(*model, account.warnings.empty());
    } catch (const BadFile& fault) {
        EXPECT_EQ(std::pair(fault.file(), fault.line()), std::pair(std::string("case.thf"), BadFile::noLine));
        const std::string what = fault.what();
        return what.substr(0, what.find(" in "));
    }
}

/// Counts, and each facet as "material(normal)".
std::string inShort(const Model& model, bool whole)
{
    std::string result = (whole ? "whole " : "cut ") + std::to_string(model.vertexCount()) + " "
                         + std::to_string(model.edgeCount());
    for (std::uint32_t i = 0; i < model.facetCount(); ++i) {
        const Vector<3>& n = model.facet(i).plane.normal();
        result += " " + model.facet(i).material->name
                  + (n == Vector<3>(0, 0, 1)    ? "+"
                     : n == Vector<3>(0, 0, -1) ? "-"
                                                : "?");
    }
    return result + ", " + std::to_string(model.materials().size());
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
    for (const auto& [why, text, wantedOutcome] : cases)
        EXPECT_EQ(outcome(text, inShort), wantedOutcome) << why;
}

namespace {

/// A thing as programs write it, with numbers of every length and facets of every kind among the usual ones.
std::string randomThing(std::minstd_rand& random)
{
    const auto below = [&random](unsigned most) { return static_cast<unsigned>(random() >> 8) % most; };
    const auto digits = [&](unsigned most) {
        std::string number;
        for (unsigned i = below(most) + 1; i > 0; --i) number += static_cast<char>('0' + below(10));
        return number;
    };
    const unsigned vertices = 3 + below(40), facets = 1 + below(30);
    std::string text = "Y " + std::to_string(vertices) + '\n';
    for (unsigned i = 0; i < 3 * vertices; ++i) {
        text += below(3) == 0 ? "-" : "";
        text += digits(below(20) == 0 ? 19 : 9);
        if (below(4) != 0) text += '.' + (below(30) == 0 ? "" : digits(below(20) == 0 ? 12 : 8));
        if (below(40) == 0) text += "e-" + digits(1);
        text += i % 3 == 2 ? '\n' : ' ';
    }
    text += "0\n" + std::to_string(facets) + '\n';
    for (unsigned i = 0; i < facets; ++i) {
        const unsigned loops = below(12) == 0 ? 2 : 1;
        text += std::to_string(loops);
        text +=
            below(10) == 0 ? "\n" : std::string(" ") + std::array{"Steel", "Wood", "A"}[below(5) / 2] + "\n";
        for (unsigned loop = 0; loop < loops; ++loop) {
            const unsigned corners = 1 + below(below(8) == 0 ? 12 : 5);
            text += std::to_string(corners);
            for (unsigned corner = 0; corner < corners; ++corner)
                text += ' ' + std::to_string(below(300) == 0 ? 0 : 1 + below(vertices + (below(90) == 0)));
            text += '\n';
        }
    }
    return text;
}

}   // namespace

TEST(Things, LargeTextIsTheSameForAnyNumberOfThreads)
{
    constexpr int vertices = 60000, facets = 150000;
    const auto read = [](const std::string& text, unsigned threads, std::size_t stopAt) {
        std::string all;
        test::RecordingReporter reporter(stopAt);
        Account account;
        try {
            all = test::bitsOf(*Things(text, "case.thf", reporter, account, threads).takeModel());
        } catch (const std::exception& fault) {
            all += fault.what();
        }
        for (const auto& [stages, stage, fraction] : reporter.calls) all += shortestDecimal(fraction) + ' ';
        return all + std::to_string(account.warnings.size());
    };
    // Columns: why, what stands for vertex 40000, for facet 100000, what follows; the report that stops it.
    const std::tuple<const char*, std::string, std::string, std::string, std::size_t> cases[] = {
        {"plain", "1 2 3\n", "1 a\n3 1 2 3\n", "", 1u << 30},
        {"unusual numbers and blanks", "1e1 @2\n\n3.12345678901234567\n", "2 b\n3 1 2 3\n3 @4 5 6\n", "",
         1u << 30},
        {"other materials", "1 2\n3\n", "1 other \n3 1 2 3\n1 @\n3 1 2 3\n1 3 1 2 3\n", "", 1u << 30},
        {"a long name", "1 2 3\n", "1 a name that is longer than others\n3 1 2 3\n", "", 1u << 30},
        {"line ends of two characters", "1 2 3\r\n", "1 a b\r\n3 1\r 2 3\r\n", "", 1u << 30},
        {"the end before the end", "1 2 3\n", "1 a\x1A b\n3 1 2 3\n", "", 1u << 30},
        {"no number", "1 x 3\n", "1 a\n3 1 2 3\n", "", 1u << 30},
        {"no such vertex", "1 2 3\n", "1 a\n3 1 2 60001\n", "", 1u << 30},
        {"a loop of nothing", "1 2 3\n", "1 a\n0\n", "", 1u << 30},
        {"more follows", "1 2 3\n", "1 a\n3 1 2 3\n", "Y 3\n0 0 0\n1 0 0\n0 1 0\n0\n1\n1 z\n3 1 2 3\n",
         1u << 30},
        {"stopped at a vertex", "1 2 3\n", "1 a\n3 1 2 3\n", "", 100},
        {"stopped at a facet", "1 2 3\n", "1 a\n3 1 2 3\n", "", 1500},
    };
    for (const auto& [why, vertex, facet, more, stopAt] : cases) {
        std::string text = "Y " + std::to_string(vertices) + "\n";
        for (int i = 0; i < vertices; ++i) {
            const std::string n = std::to_string(i * 0.37);
            text += i == 40000 ? vertex : n + " -" + n + ' ' + std::to_string(i % 77) + ".25\n";
        }
        text += "0\n" + std::to_string(facets) + '\n';
        for (int i = 0; i < facets; ++i) {
            const std::string at = std::to_string(i % (vertices - 3) + 1),
                              next = std::to_string(i % 1000 + 1);
            text += i == 100000 ? facet : (i % 5000 < 9 ? "1 A B\n3 " : "1 a\n3 ") + at + ' ' + next + " 7\n";
        }
        text += more;
        const std::string one = read(text, 1, stopAt);
        EXPECT_GT(one.size(), 800u) << why;
        for (const unsigned threads : {2u, 3u})
            EXPECT_TRUE(read(text, threads, stopAt) == one) << why << threads;
    }
}

TEST(Things, NumbersOneBlankApartGiveTheSameAsAnyOthers)   // the former are read in a way of their own
{
    std::minstd_rand random(5);
    const auto below = [&random](std::size_t most) { return static_cast<std::size_t>(random() >> 8) % most; };
    const auto everything = [](const Model& model, bool whole) {
        return (whole ? "whole\n" : "cut\n") + test::bitsOf(model);
    };
    std::set<std::string> faults;
    for (int trial = 0; trial < 600; ++trial) {
        std::string text = randomThing(random);
        if (trial % 4 == 1) text.resize(4 + below(text.size() - 4));
        if (trial % 4 == 3) text[4 + below(text.size() - 4)] = "x-.e9+"[below(6)];
        std::string apart;
        for (const char c : text) apart += c == ' ' ? " @" : c == '\n' ? " \n " : std::string(1, c);
        const std::string read = outcome(text, everything);
        ASSERT_TRUE(read == outcome(apart, everything)) << text;
        if (read.find('\n') == std::string::npos) faults.insert(read);
    }
    EXPECT_GE(faults.size(), 3u);
}
